#include "lib/WriteFailure.h"

#include "platform/Texts.h"

#include <array>
#include <cerrno>
#include <filesystem>

namespace {

struct Row {
    int code;
    const char* key;
};

constexpr std::array rows = {
    Row{FileError::link, "msg.no_plain_file"},
    Row{FileError::noPlainFile, "msg.no_plain_file"},
    Row{EISDIR, "msg.no_plain_file"},
    Row{ELOOP, "msg.no_plain_file"},
    Row{FileError::tooLarge, "msg.no_settings_file"},
    Row{FileError::locked, "msg.saving_elsewhere"},
    Row{ENOSPC, "msg.disk_full"},
    Row{EDQUOT, "msg.disk_full"},
    Row{FileError::otherLength, "msg.disk_full"},
    Row{FileError::notReadBack, "msg.device_failed"},
    Row{EIO, "msg.device_failed"},
    Row{ENODEV, "msg.place_gone"},
    Row{ENXIO, "msg.place_gone"},
    Row{ENOENT, "msg.place_gone"},
};

} // namespace

QString inUsersWords(QString words)
{
    constexpr std::array own = {Row{FileError::link, "file.link"},
        Row{FileError::noPlainFile, "file.no_plain_file"}, Row{FileError::tooLarge, "file.too_large"},
        Row{FileError::notReadBack, "file.not_read_back"}, Row{FileError::otherLength, "file.other_length"},
        Row{FileError::locked, "file.locked"}};
    for (const Row& row : own)
        words.replace(QString::fromStdString(FileError{row.code}.text()), platform::localized(row.key));
    return words;
}

QString writeFailureText(FileError error, const std::string& path, const char* otherwise)
{
    const char* key = otherwise;
    for (const Row& row : rows) {
        if (row.code == error.code)
            key = row.key;
    }
    const QString text = platform::localized(key);
    const QString name = QString::fromStdString(std::filesystem::path(path).filename().native());
    return text.contains(QStringLiteral("%1")) ? text.arg(name) : text;
}
