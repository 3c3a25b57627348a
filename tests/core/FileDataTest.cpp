#include "settings/record/FileDataFields.h"
#include "tests/core/CliSupport.h"
#include "tests/support/RecordBytes.h"
#include "tests/support/Testing.h"

namespace {

_FILEDATA defaults(bool korean)
{
    _FILEDATA record;
    initFileDataForRegion(record, korean);
    return record;
}

} // namespace

TEST(FileData, DefaultsOfBothRegionsSaveAsTheCameraKnowsThem)
{
    const TempFolder folder;
    for (const auto& [korean, checksum] : {std::pair(false, 0x19B7), std::pair(true, 0x25CF)}) {
        const _FILEDATA record = FinishedFileData(defaults(korean)).record();
        EXPECT_EQ(record.checksum, checksum);
        ASSERT_EQ(saveFileData(record, folder.path("config.bin")), std::nullopt);
        _FILEDATA back{};
        ASSERT_TRUE(loadFileData(folder.path("config.bin"), back));
        EXPECT_EQ(bytesOf(back), bytesOf(record));
    }
    const _FILEDATA english = FinishedFileData(defaults(false)).record();
    EXPECT_EQ(
        bytesOf(english).substr(0, 12), std::string("\x26\x57\xB7\x19\x01\x00\x00\x00\x46\x00\x00\x00", 12));
    ASSERT_FALSE(writeDefaultFileData(FilePlace::chosen(folder.path("config.bin"))));
    EXPECT_EQ(contents(folder.path("config.bin")).substr(2, 2), std::string(2, '\0'));
}

TEST(FileData, ChecksumHoldsTheLowerHalvesOfTheWordsOnly)
{
    const auto checksumAfter = [](size_t changedByte) {
        _FILEDATA record = defaults(false);
        std::string bytes = bytesOf(record);
        bytes[changedByte] = static_cast<char>(bytes[changedByte] ^ 0x5A);
        std::memcpy(&record, bytes.data(), bytes.size());
        return FinishedFileData(record).record().checksum;
    };
    for (const size_t unseen : {0, 1, 2, 6, 7, 270})
        EXPECT_EQ(checksumAfter(unseen), 0x19B7) << unseen;
    for (const size_t seen : {4, 5, 120, 269})
        EXPECT_NE(checksumAfter(seen), 0x19B7) << seen;
    _FILEDATA plate = defaults(false);
    std::memcpy(plate.szPlateNumber.data(), "12AB3456", 8);
    EXPECT_EQ(FinishedFileData(plate).record().osd_plate_flag, 1);
}

TEST(FileData, AShortFileLeavesTheRecordAsItWas)
{
    const TempFolder folder;
    _FILEDATA record = defaults(false);
    for (const size_t size : {0, 1, 271}) {
        const std::string path = folder.file("short.bin", std::vector<std::byte>(size));
        EXPECT_FALSE(loadFileData(path, record)) << size;
        EXPECT_EQ(readFileData(FilePlace::chosen(path), record).code, FileError::tooShort);
        EXPECT_EQ(bytesOf(record), bytesOf(defaults(false)));
    }
    EXPECT_EQ(readFileData(FilePlace::chosen(folder.path("none")), record).code, ENOENT);
    EXPECT_TRUE(loadFileData(folder.file("long.bin", std::vector<std::byte>(273)), record));
}

TEST(FileData, SavesOnlyToAFile)
{
    const TempFolder folder;
    const CollectedLog log;
    fs::create_directory(folder.path("config.bin"));
    EXPECT_EQ(saveFileData(defaults(false), folder.path("config.bin")), "msg.file_open_fail");
    EXPECT_EQ(saveFileData(defaults(false), folder.path("no/config.bin")), "msg.file_open_fail");

    // A link stays a link, and what it leads to is replaced.
    folder.file("real.bin", std::vector<std::byte>(500));
    fs::create_symlink("real.bin", folder.path("link.bin"));
    EXPECT_EQ(saveFileData(defaults(false), folder.path("link.bin")), std::nullopt);
    EXPECT_TRUE(fs::is_symlink(folder.path("link.bin")));
    EXPECT_EQ(contents(folder.path("real.bin")), bytesOf(defaults(false)));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 3);
}

TEST(FileDataFields, CoverTheRecordWithoutGaps)
{
    size_t end = 0;
    for (const FileDataField& field : fileDataFields()) {
        EXPECT_EQ(field.offset, end) << field.name;
        using Type = FileDataField::Type;
        end += field.type == Type::unsigned16 ? 2 : field.type == Type::text8 ? 8 : 4;
    }
    EXPECT_EQ(end, sizeof(_FILEDATA));
    EXPECT_EQ(fileDataFields().size(), 68u);
}

TEST(CliConfig, SetsTheNamedFieldsAndNothingElse)
{
    const TempFolder folder;
    const std::string file = folder.path("config.bin");
    ASSERT_EQ(zavikctl({"config", "defaults", "--region", "ko", file}).code, 0);
    _FILEDATA wanted = defaults(true);
    wanted.speed_disp_unit = 1;
    wanted.gsen_x_threshold = -7;
    std::memcpy(wanted.szPlateNumber.data(), "12AB3456", 8);
    wanted = FinishedFileData(wanted).record();
    EXPECT_EQ(zavikctl({"config", "set", file, "speed_disp_unit=1", "gsen_x_threshold=-7",
                           "szPlateNumber=12AB3456"})
                  .code,
        0);
    EXPECT_EQ(contents(file), bytesOf(wanted));
    const std::string shown = zavikctl({"config", "show", file}).out;
    for (const char* line : {"\ngsen_x_threshold=-7\n", "\nszPlateNumber=12AB3456\n", "\nchecksum_ok=true\n"})
        EXPECT_NE(shown.find(line), std::string::npos) << line;
    EXPECT_NE(zavikctl({"config", "show", file, "--json"}).out.find("\"szPlateNumber\":\"12AB3456\""),
        std::string::npos);

    for (const char* bad : {"no_such=1", "speed_disp_unit", "speed_disp_unit=", "speed_disp_unit=-1",
             "speed_disp_unit=1x", "speed_disp_unit=4294967296", "cfg_ver=65536",
             "gsen_x_threshold=2147483648", "szPlateNumber=123456789", "szPlateNumber=12-3"}) {
        EXPECT_EQ(zavikctl({"config", "set", file, "ledoff=1", bad}).code, 1) << bad;
        EXPECT_EQ(contents(file), bytesOf(wanted)) << bad;
    }
}

TEST(CliConfig, RefusesWhatIsNoRecord)
{
    const TempFolder folder;
    for (const size_t size : {0, 271, 273}) {
        const std::string file = folder.file("config.bin", std::vector<std::byte>(size));
        EXPECT_EQ(zavikctl({"config", "set", file, "ledoff=1"}).code, 1);
        EXPECT_EQ(zavikctl({"config", "show", file}).code, 1);
        EXPECT_EQ(fs::file_size(file), size);
    }
    EXPECT_THAT(zavikctl({"config", "show", folder.file("wrong.bin", bytesOf(defaults(false)))}).out,
        HasSubstr("checksum_ok=false"));
    EXPECT_EQ(zavikctl({"config", "defaults", "--region", "fr", folder.path("x")}).code, 2);
    EXPECT_EQ(zavikctl({"size", "1977614336"}).out, "1.9 GB\n");
    EXPECT_EQ(zavikctl({"size", "-1"}).code, 2);
    EXPECT_EQ(zavikctl({"size", "12x"}).code, 1);
}
