#include "cli/Commands.h"
#include "cli/Json.h"
#include "cli/Written.h"
#include "common/Log.h"
#include "common/Text.h"
#include "settings/record/FileDataFields.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>

namespace cli {

namespace {

bool checksumFits(const _FILEDATA& record)
{
    _FILEDATA finished = FinishedFileData(record).record();
    // The checksum is that of the unchanged record, not of what a save would make of it.
    finished.checksum = static_cast<uint16_t>(
        finished.checksum ^ uint32_t(finished.osd_plate_flag) ^ uint32_t(record.osd_plate_flag));
    return finished.checksum == record.checksum;
}

/// The record of the file, or the line that says why there is none was written.
std::optional<_FILEDATA> loaded(const FilePlace& place, Streams streams)
{
    const auto size = place.size();
    _FILEDATA record;
    if (size && *size != sizeof record) {
        failure(streams, place.path(),
            formatted("is %ju bytes long, a record is %zu", uintmax_t(*size), sizeof record));
        return std::nullopt;
    }
    if (const FileError why = readFileData(place, record)) {
        failure(streams, place.path(), why.text());
        return std::nullopt;
    }
    return record;
}

ExitCode saved(const _FILEDATA& record, const FilePlace& place, Streams streams)
{
    const FileError why = saveFileData(FinishedFileData(record), place);
    return why ? failure(streams, place.path(), why.text()) : ExitCode::success;
}

ExitCode show(const std::string& path, bool asJson, Streams streams)
{
    const auto record = loaded(FilePlace::chosen(path), streams);
    if (!record)
        return ExitCode::failure;
    Json json;
    for (const FileDataField& field : fileDataFields()) {
        const std::string value = fieldText(*record, field);
        if (!asJson)
            streams.out << field.name << '=' << visibleText(value) << '\n';
        else if (field.type == FileDataField::Type::text8)
            json[std::string(field.name)] = value;
        else
            json[std::string(field.name)] = std::stoll(value);
    }
    const bool fits = checksumFits(*record);
    json["checksum_ok"] = fits;
    if (asJson)
        streams.out << jsonText(json) << '\n';
    else
        streams.out << "checksum_ok=" << (fits ? "true" : "false") << '\n';
    return ExitCode::success;
}

ExitCode writeDefaults(const FilePlace& place, std::string_view region, Streams streams)
{
    _FILEDATA record;
    initFileDataForRegion(record, region == "ko");
    return saved(record, place, streams);
}

ExitCode set(const FilePlace& place, std::span<const std::string> assignments, Streams streams)
{
    auto record = loaded(place, streams);
    if (!record)
        return ExitCode::failure;
    for (const std::string_view assignment : assignments) {
        const size_t sign = assignment.find('=');
        const auto all = fileDataFields();
        const auto field = std::ranges::find(all, assignment.substr(0, sign), &FileDataField::name);
        if (sign == std::string_view::npos || field == all.end())
            return failure(streams, assignment, "names no field of the record; nothing was written");
        if (!setField(*record, *field, assignment.substr(sign + 1)))
            return failure(streams, assignment, "does not fit the field; nothing was written");
    }
    return saved(*record, place, streams);
}

ExitCode wrongUsage(Streams streams)
{
    const auto config = std::ranges::find(zavikctl.commands, "config", &Command::name);
    streams.err << "zavikctl: " << usageLine(zavikctl, *config) << '\n';
    return ExitCode::wrongUsage;
}

} // namespace

ExitCode runConfig(const Arguments& arguments, Streams streams)
{
    const std::string& what = arguments.operands[0];
    const std::string& path = arguments.operands[1];
    const auto rest = std::span(arguments.operands).subspan(2);
    const auto region = arguments.value("--region");
    const bool asJson = arguments.has("--json");
    const bool isLinkFollowed = arguments.has(followLink);
    if (what == "show" && rest.empty() && !region && !isLinkFollowed)
        return show(path, asJson, streams);
    const bool isDefaults = what == "defaults" && rest.empty() && !asJson;
    const bool isSet = what == "set" && !rest.empty() && !asJson && !region;
    if (!isDefaults && !isSet)
        return wrongUsage(streams);
    return writtenTo(path, isLinkFollowed, streams, [&](const FilePlace& place) {
        return isSet ? set(place, rest, streams) : writeDefaults(place, region.value_or("en"), streams);
    });
}

} // namespace cli
