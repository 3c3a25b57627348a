#include "cli/commands/Command.h"

namespace cli {

namespace {

constexpr std::string_view conventions =
    "Words after -- are no options. JSON texts are UTF-8; a byte of a file name that is not UTF-8 is written "
    "as \\udcXX, which Python's os.fsencode turns back into the byte. Numbers that JSON cannot hold are "
    "null.\n"
    "Exit codes: 0 done, 1 something could not be read or written, 2 wrong usage.\n";

constexpr std::string_view languages[] = {"en", "ko"};
constexpr std::string_view configActions[] = {"show", "defaults", "set"};

constexpr Option asJson = {"--json", "writes JSON"};
constexpr Option followLink = {"--follow-link",
    "writes the file that a link leads to; without it a link is refused, because a card may hold any"};

constexpr Operand listOperands[] = {{"FOLDER", "the folder to look in", Kind::folder}};
constexpr Option listOptions[] = {asJson};
constexpr Command list = {
    "list",
    "Lists the recordings in a folder and all folders below it, oldest first.",
    "Columns: date, time, kind (always, motion, event), camera (front, rear, -), path; - where the file name "
    "tells no date; control characters of a path are written as \\x1b or \\u202e.\n"
    "--json: an array of {\"path\", \"file\", \"kind\" (0 always, 1 motion, 2 event), \"date\", \"time\", "
    "\"direction\" (0 front, 1 rear, 2 unknown)}; date and time are empty where they are unknown.\n"
    "Folders on other file systems and links that lead outside are skipped. Of more than 15000 recordings "
    "the first ones found are listed, and a line on the error stream says so. When a folder cannot be read "
    "to its end, what was found is listed and the exit code is 1.\n",
    listOperands,
    listOptions,
};

constexpr Command drives = {
    "drives",
    "Lists the drives in a folder: recordings that follow each other without a gap above 60 seconds.",
    "Columns: start, end, recordings, distance, top speed, the strongest acceleration beside gravity, "
    "moments; "
    "- where no recording tells it.\n"
    "--json: an array of {\"start\", \"end\", \"recordings\", \"distance_km\", \"top_speed_kmh\", "
    "\"strongest_g\", \"moments\"}. Times are the camera's own (\"2024-05-18T18:12:13\"); recordings are "
    "paths, "
    "oldest first, front before rear of the same start; moments are objects as the command moments writes "
    "them; "
    "a figure that no recording tells is null.\n"
    "Lengths come from the headers of the files; a recording whose name tells no start is in no drive. When "
    "a "
    "recording cannot be read, the others are listed and the exit code is 1.\n",
    listOperands,
    listOptions,
};

constexpr Operand momentsOperands[] = {{"FILE|FOLDER", "a recording, or the folder to look in", Kind::file}};
constexpr Command moments = {
    "moments",
    "Lists impacts and hard brakings of a recording, or of all drives in a folder.",
    "An impact is where the G-sensor is more than 1 g from rest, a braking where the speed falls by more "
    "than "
    "0.4 g; what follows within two seconds is one moment. The direction tells where an impact came from: "
    "front, rear, left, right, above, below.\n"
    "--json: an array of {\"file\", \"seconds\" (into the file), \"kind\" (\"impact\", \"braking\"), \"g\", "
    "\"direction\"}.\n"
    "In a folder the recordings of one start count once.\n",
    momentsOperands,
    listOptions,
};

constexpr Operand recording[] = {{"FILE", "the recording", Kind::file}};
constexpr Option telemetryOptions[] = {asJson,
    {"--csv", "writes a row for each G-sensor sample, with the GPS header that is paired with it"},
    {"--gpx",
        "writes one GPX 1.1 track of the GPS records that have a position; decimal degrees, speeds in m/s"}};
constexpr Command telemetry = {
    "telemetry",
    "Shows a recording's G-sensor samples and GPS records; a summary without an option.",
    "--json: {\"result\", \"gsensor\", \"gps\", \"fixes\"}; result is false when the recording has no side "
    "data or its last record is cut. Positions are NMEA ddmm.mmmm magnitudes as recorded, \"KM\" is the "
    "number of its character, \"Now\" is year, month, day of week, day, hour, minute, second, "
    "milliseconds.\n",
    recording,
    telemetryOptions,
};

constexpr Option volumesOptions[] = {
    asJson, {"--card", "the folder takes the part of a card, before the others", "FOLDER", Kind::folder}};
constexpr Command volumes = {
    "volumes",
    "Lists the mounted cards, the one that the camera's settings would go to first.",
    "For each card: its line as the windows show it, where it is mounted, its device, size and flags, and "
    "the identity of the medium.\n"
    "--json: an array of {\"display\", \"volumeName\", \"mountedURL\", \"deviceFilePath\", \"deviceModel\" "
    "(null when unknown), \"volumeSize\", \"writable\", \"mediaWhole\", \"key\"}.\n"
    "Having no card is no failure; a system that cannot be asked is one, unless --card is given.\n",
    {},
    volumesOptions,
};

constexpr Operand driveLogOperands[] = {{"FILE", "the drive log, .drv or .obd", Kind::file}};
constexpr Option driveLogOptions[] = {{"--lang",
    "the language of the titles in the first line; en when not given", "en|ko", Kind::text, languages}};
constexpr Command driveLog = {
    "drive-log",
    "Writes a drive log (.drv or .obd) as CSV, as the drive log page exports it.",
    "Fields are separated by commas without quotes, lines end with a line feed. Of a file that ends early "
    "the whole records are written; a line on the error stream and exit code 1 say so.\n",
    driveLogOperands,
    driveLogOptions,
};

constexpr size_t fieldCount = 68; // of the settings record: each may be set once
constexpr Operand configOperands[] = {{"ACTION", "show, defaults or set", Kind::text, configActions},
    {"FILE", "the settings, config.bin", Kind::file},
    {"NAME=VALUE", "a field and what it is set to", Kind::text, {}, 0, fieldCount}};
constexpr Option configOptions[] = {asJson, followLink,
    {"--region", "whose defaults are written; en when not given", "en|ko", Kind::text, languages}};
constexpr Command config = {
    "config",
    "Shows or changes the camera's settings, the file config.bin of its card.",
    "show: every field of the record by name, szPlateNumber as text, and whether the checksum fits "
    "(checksum_ok). With --json the same as one object.\n"
    "defaults: writes the settings that a new camera has.\n"
    "set: changes these fields only, then the checksum and osd_plate_flag that follow from them. Values are "
    "whole numbers; szPlateNumber takes up to 8 letters and digits. Nothing is written unless every name and "
    "value fits. The file is replaced at once: it holds the old settings or the new ones.\n",
    configOperands,
    configOptions,
    "show FILE [--json] | defaults [--region en|ko] [--follow-link] FILE | set [--follow-link] FILE "
    "NAME=VALUE ...",
};

constexpr Operand sizeOperands[] = {{"BYTES", "a whole number"}};
constexpr Command size = {
    "size",
    "Says a size in bytes as the program shows it.",
    "A short text such as \"1.9 GB\"; units of 1024.\n",
    sizeOperands,
};

constexpr Operand clockOperands[] = {{"FILE", "the clock file, timeset.cfg", Kind::file},
    {"\"yyyy/MM/dd HH:mm:ss\"", "what is written", Kind::text, {}, 0}};
constexpr Option clockOptions[] = {followLink};
constexpr Command clock = {
    "clock",
    "Prints the time that a timeset.cfg sets the camera's clock to, or writes it.",
    "Years 1 to 9999 of the Gregorian calendar, 24 hours, no time zone. A date or time that does not exist "
    "is refused and nothing is written. The file is replaced as a whole.\n",
    clockOperands,
    clockOptions,
};

constexpr Command all[] = {list, drives, moments, telemetry, volumes, driveLog, config, size, clock};

} // namespace

const Program zavikctl = {"zavikctl", 1, "Reads a dash camera's recordings and card.", conventions, all};

} // namespace cli
