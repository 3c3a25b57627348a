#include "cardtools/drivelog/DriveLogTitles.h"

namespace {

std::string_view titleOf(const DriveLogColumn& column, std::string_view language)
{
    for (const DriveLogTitle* title = driveLogTitles; !title->key.empty(); ++title) {
        if (title->key == column.title && title->language == language)
            return title->text;
    }
    return column.title;
}

} // namespace

std::vector<std::string> driveLogColumnNames(const DriveLogFormat& format, std::string_view language)
{
    std::vector<std::string> names;
    for (const DriveLogColumn& column : format.columns)
        names.emplace_back(titleOf(column, language == "ko" ? "ko" : "en"));
    return names;
}
