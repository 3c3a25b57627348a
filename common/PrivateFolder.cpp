#include "common/PrivateFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

std::string makePrivateFolder(std::string& why)
{
    std::error_code error;
    std::string name = (std::filesystem::temp_directory_path(error) / "zavik-XXXXXX").native();
    if (!error && mkdtemp(name.data()))
        return name;
    why = error ? error.message() : std::strerror(errno);
    return {};
}
