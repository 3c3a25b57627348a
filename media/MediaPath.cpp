#include "media/MediaPath.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace {

/// The folder walk's paths are normal already; checking that is much cheaper than normalising.
bool isStandardized(std::string_view path)
{
    if (path.empty() || path.front() != '/' || (path.size() > 1 && path.back() == '/'))
        return false;
    for (size_t slash = 0; slash != path.npos; slash = path.find('/', slash + 1)) {
        const auto rest = path.substr(slash + 1);
        if (rest.starts_with('/'))
            return false;
        if (rest.starts_with('.')) {
            const auto component = rest.substr(0, rest.find('/'));
            if (component == "." || component == "..")
                return false;
        }
    }
    return true;
}

} // namespace

std::string standardizedPath(std::string path)
{
    if (path.empty() || isStandardized(path))
        return path;
    std::error_code error;
    std::filesystem::path whole(std::move(path));
    if (!whole.is_absolute())
        whole = std::filesystem::current_path(error) / whole;
    std::string normal = whole.lexically_normal().native();
    while (normal.size() > 1 && normal.back() == '/')
        normal.pop_back();
    return normal;
}

PathPieces piecesOfPath(std::string_view path)
{
    const size_t slash = path.rfind('/');
    const auto component = slash == path.npos ? path : path.substr(slash + 1);
    const size_t stop = component.rfind('.');
    PathPieces pieces;
    if (slash != path.npos)
        pieces.dir = path.substr(0, slash == 0 ? 1 : slash);
    pieces.name = component.substr(0, stop);
    if (stop != component.npos)
        pieces.extension = component.substr(stop + 1);
    return pieces;
}
