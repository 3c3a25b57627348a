#include "platform/mpv/VideoSnapshot.h"

#include <QFile>
#include <QImageWriter>
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int jpegQuality = 95;

std::string formatOf(const std::filesystem::path& path)
{
    std::string extension = path.extension().string();
    const auto lower = [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); };
    std::transform(extension.begin(), extension.end(), extension.begin(), lower);
    if (extension == ".jpg" || extension == ".jpeg")
        return "jpeg";
    return extension == ".png" ? "png" : "";
}

bool mayReplace(const std::string& path)
{
    struct stat there = {};
    if (::lstat(path.c_str(), &there) != 0)
        return errno == ENOENT;
    return there.st_uid == ::geteuid() && (S_ISREG(there.st_mode) || S_ISLNK(there.st_mode));
}

bool write(const QImage& picture, int descriptor, const std::string& format)
{
    QFile file;
    if (!file.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return false;
    }
    QImageWriter writer(&file, QByteArray::fromStdString(format));
    if (format == "jpeg")
        writer.setQuality(jpegQuality);
    const bool written = writer.write(picture) && file.flush();
    file.close();
    return written && file.error() == QFileDevice::NoError;
}

} // namespace

bool writeVideoSnapshot(const QImage& picture, const std::string& path)
{
    const std::string format = formatOf(path);
    if (picture.isNull() || format.empty() || !mayReplace(path))
        return false;
    // mkstemp creates the file anew, readable by this user alone.
    std::string fresh = (std::filesystem::path(path).parent_path() / ".snapshot-XXXXXX").string();
    const int descriptor = ::mkstemp(fresh.data());
    if (descriptor < 0)
        return false;
    if (write(picture, descriptor, format) && ::rename(fresh.c_str(), path.c_str()) == 0)
        return true;
    ::unlink(fresh.c_str());
    return false;
}

} // namespace platform
