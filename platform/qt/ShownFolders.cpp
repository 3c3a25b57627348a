#include "platform/qt/ShownFolders.h"

#include "common/PrivateFolder.h"

#include <QFile>

#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace platform {

ShownFolders::~ShownFolders()
{
    std::error_code error;
    for (const auto& each : folders)
        fs::remove(each.first, error);
    if (!place.empty())
        fs::remove(place, error);
}

QString ShownFolders::shown(const std::string& folder)
{
    const QString name = QFile::decodeName(folder.c_str());
    if (QFile::encodeName(name).toStdString() == folder)
        return name;
    for (const auto& [link, target] : folders) {
        if (target == folder)
            return QFile::decodeName(link.c_str());
    }
    std::string why;
    if (place.empty())
        place = makePrivateFolder(why);
    const fs::path numbered = fs::path(place) / std::to_string(folders.size() + 1);
    const std::string link = numbered.native() + " " + QFile::encodeName(name.section('/', -1)).toStdString();
    std::error_code error;
    if (place.empty() || (fs::create_directory_symlink(folder, link, error), error))
        return {};
    folders[link] = folder;
    return QFile::decodeName(link.c_str());
}

std::string ShownFolders::real(const QString& path) const
{
    const std::string bytes = QFile::encodeName(path).toStdString();
    for (const auto& [link, target] : folders) {
        if (bytes == link || bytes.starts_with(link + "/"))
            return target + bytes.substr(link.size());
    }
    return bytes;
}

} // namespace platform
