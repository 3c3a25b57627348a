#include "cli/Commands.h"
#include "cli/JsonWriter.h"
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
    _FILEDATA finished = record;
    finishFileData(finished);
    // The checksum covers the record as it stands, whatever a save would change first.
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
    if (!loadFileData(place, record)) {
        FileError why;
        (void)place.open(why);
        failure(streams, place.path(), why ? why.text() : "cannot be read");
        return std::nullopt;
    }
    return record;
}

ExitCode saved(_FILEDATA& record, const FilePlace& place, Streams streams)
{
    finishFileData(record);
    const FileError why = saveFileData(record, place);
    return why ? failure(streams, place.path(), why.text()) : ExitCode::Success;
}

ExitCode show(const std::string& path, bool asJson, Streams streams)
{
    const auto record = loaded(FilePlace::chosen(path), streams);
    if (!record)
        return ExitCode::Failure;
    JsonWriter json(streams.out);
    json.beginObject();
    for (const FileDataField& field : fileDataFields()) {
        const std::string value = fieldText(*record, field);
        if (!asJson)
            streams.out << field.name << '=' << visibleText(value) << '\n';
        else if (field.type == FileDataField::Type::Text8)
            json.key(field.name).string(value);
        else
            json.key(field.name).integer(std::stoll(value));
    }
    const bool fits = checksumFits(*record);
    json.key("checksum_ok").boolean(fits);
    json.endObject();
    if (asJson)
        json.finish();
    else
        streams.out << "checksum_ok=" << (fits ? "true" : "false") << '\n';
    return ExitCode::Success;
}

ExitCode writeDefaults(const FilePlace& place, std::string_view region, Streams streams)
{
    _FILEDATA record;
    initFileDataForRegion(record, region == "ko");
    return saved(record, place, streams);
}

ExitCode set(const FilePlace& place, std::span<const std::string_view> assignments, Streams streams)
{
    auto record = loaded(place, streams);
    if (!record)
        return ExitCode::Failure;
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
    streams.err << "zavikctl: usage: zavikctl config " << configCommand.synopsis << '\n';
    return ExitCode::WrongUsage;
}

ExitCode runConfig(const Arguments& arguments, Streams streams)
{
    const std::string_view what = arguments.operands[0];
    const std::string path(arguments.operands[1]);
    const auto rest = std::span(arguments.operands).subspan(2);
    const auto region = arguments.value("--region");
    const bool asJson = arguments.flag == "--json";
    const bool isLinkFollowed = arguments.flag == followLink;
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

constexpr std::string_view flags[] = {"--json", followLink};
constexpr std::string_view regions[] = {"en", "ko"};
constexpr Option options[] = {{"--region", regions}};

} // namespace

const Command configCommand = {
    .name = "config",
    .synopsis =
        "show FILE [--json] | defaults [--region en|ko] [--follow-link] FILE | set [--follow-link] FILE "
        "NAME=VALUE ...",
    .summary = "Shows or changes the camera's settings, the file config.bin of its card.",
    .details =
        "show: every field of the record by name, szPlateNumber as text, and whether the checksum fits\n"
        "      (checksum_ok). --json: the same as one object.\n"
        "defaults: writes the settings that a new camera has.\n"
        "set: changes these fields only, then the checksum and osd_plate_flag that follow from them. Values "
        "are\n"
        "      whole numbers; szPlateNumber takes up to 8 letters and digits. Nothing is written unless "
        "every\n"
        "      name and value fits. The file is replaced at once: it holds the old settings or the new "
        "ones.\n"
        "A link is refused, because a card may hold any; --follow-link writes the file that it leads to.\n",
    .fewestOperands = 2,
    .mostOperands = 2 + 68,
    .flags = flags,
    .run = runConfig,
    .options = options,
};

} // namespace cli
