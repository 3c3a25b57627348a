#include "cardtools/drivelog/DriveLog.h"
#include "tests/core/SideDataSupport.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/Testing.h"

namespace {

template <typename Record> DriveLog logOf(const Record& record)
{
    const std::vector<std::byte> file = driveLogFile(std::vector{record});
    MemoryByteSource source(file);
    return readDriveLog(source, sizeof(Record) == 40 ? flashDataFormat : obdDriveFormat);
}

std::string rowText(const DriveLog& log)
{
    std::string text;
    for (size_t i = 0; i < log.format().columns.size(); ++i)
        text += (i ? "|" : "") + log.stringForColumnIndex(static_cast<int64_t>(i), 0);
    return text;
}

TEST(DriveLogCells, OfWholeRows)
{
    EXPECT_EQ(rowText(logOf(flashRecord())),
        "1|65535|2015/03/21|07:05:09|SAT|3734.1234|12702.5000|123.4|61|99|A|-0.50|+1.00|+0.00|12.5");
    EXPECT_EQ(rowText(logOf(FlashDataRecord{.yoil = 7, .value = 2, .year = 255, .battery = 5})),
        "1|0|2155/00/00|00:00:00|-|0000.0000|00000.0000|0.0|0|0|V|+0.00|+0.00|+0.00| 0.5");
    EXPECT_EQ(rowText(logOf(obdRecord())),
        "1|70000|2015/03/21|07:05:09|SUN|3734.1234|12702.5000|60|61|2500|123.5|12.6|30|OFF|ON|ON|-30|OFF|3|D|"
        "ON|17|25.3|-0.50|+1.00|+0.00");
    ObdDriveRecord odd{.yoil = 9, .gep = 5, .sbk = 2};
    odd.gps_speed = odd.cur_speed = odd.rpm = odd.battery = odd.acp = odd.fbk = odd.rll = odd.lll = odd.sbt =
        odd.tpa = -1;
    odd.driving_distance = -1;
    odd.swa = odd.abt = 9999;
    EXPECT_EQ(rowText(logOf(odd)),
        "1|0|1900/00/00|00:00:00|-|0000.0000|00000.0000|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|+0.00|+0.00|+0.00");
    FlashDataRecord wild{.latWhole = 65535, .latFraction = 65535, .driving_distance = UINT32_MAX};
    wild.x = 32, wild.y = -96, wild.z = INT16_MIN, wild.battery = -5;
    EXPECT_EQ(rowText(logOf(wild)),
        "1|0|1900/00/00|00:00:00|SUN|65535.65535|00000.0000|429496729.5|0|0|V|+0.12|-0.38|-128.00| 0.-5");
    EXPECT_EQ(logOf(flashRecord()).stringForColumnIndex(15, 0), "");
    EXPECT_EQ(logOf(flashRecord()).stringForColumnIndex(0, 1), "");
}

TEST(DriveLogCells, ShowNothingForWhatCannotBe)
{
    const auto shown = [](const DriveLog& log) {
        std::string text;
        for (const int64_t column : {2, 3, 5, 6, 7, 8, 9})
            text += log.shownText(column, 0) + '|';
        return text;
    };
    EXPECT_EQ(shown(logOf(flashRecord())), "2015/03/21|07:05:09|3734.1234|12702.5000|123.4|61|99|");
    FlashDataRecord flash = flashRecord();
    ObdDriveRecord obd = obdRecord();
    flash.month = obd.month = 13;
    flash.hour = obd.hour = 25;
    flash.latWhole = obd.latWhole = 9001;
    flash.lonWhole = obd.lonWhole = 18001;
    flash.cur_speed = flash.max_speed = 65535;
    obd.cur_speed = obd.gps_speed = 1001;
    EXPECT_EQ(shown(logOf(flash)), "||||123.4|||");
    EXPECT_EQ(shown(logOf(obd)), "||||||2500|");
    EXPECT_EQ(logOf(flash).stringForColumnIndex(8, 0), "65535") << "the export has what the file has";
    EXPECT_EQ(logOf(flash).placeAt(0).latitude, 0);
    EXPECT_EQ(logOf(flashRecord()).shownText(15, 0), "");
}

TEST(DriveLogFile, ShowsTheWholeRecordsThatWereReadWhateverTheHeaderSays)
{
    const std::vector<std::byte> three = driveLogFile(std::vector(3, flashRecord()));
    using enum DriveLogEnd;
    const std::tuple<uint32_t, size_t, DriveLogEnd, int64_t> cases[] = {{3, 132, whole, 3},
        {0, 132, whole, 0}, {1, 132, whole, 1}, {4, 132, cut, 3}, {3, 131, cut, 2}, {3, 92, cut, 2},
        {3, 12, cut, 0}, {3, 11, noHeader, 0}, {3, 0, noHeader, 0}, {107374182, 132, cut, 3},
        {107374183, 132, impossibleCount, 0}, {UINT32_MAX, 132, impossibleCount, 0}};
    for (const auto& [count, size, end, records] : cases) {
        SCOPED_TRACE(std::to_string(count) + " records announced in " + std::to_string(size) + " bytes");
        std::vector<std::byte> file = three;
        std::memcpy(file.data(), &count, sizeof count);
        file.resize(size);
        MemoryByteSource source(file);
        const DriveLog log = readDriveLog(source, flashDataFormat);
        EXPECT_EQ(log.end(), end);
        EXPECT_EQ(log.count(), records);
        EXPECT_EQ(log.stringForColumnIndex(1, records - 1), records ? "65535" : "");
    }
}

TEST(DriveLogFile, KeepsWhatWasReadBeforeTheDeviceFailed)
{
    const std::vector<std::byte> file = driveLogFile(std::vector(3, obdRecord()));
    for (size_t good = 0; good < file.size(); ++good) {
        UnreliableSource card(file);
        card.failsAt = good;
        const DriveLog log = readDriveLog(card, obdDriveFormat);
        ASSERT_EQ(log.end(), good < 12 ? DriveLogEnd::headerFailed : DriveLogEnd::deviceFailed) << good;
        ASSERT_EQ(log.count(), good < 12 ? 0 : static_cast<int64_t>((good - 12) / 68)) << good;
    }
    std::stop_source stopped;
    stopped.request_stop();
    MemoryByteSource source(file);
    EXPECT_EQ(readDriveLog(source, obdDriveFormat, stopped.get_token()).end(), DriveLogEnd::stopped);
    const std::vector<std::byte> large = driveLogFile(std::vector(40000, obdRecord()));
    MemoryByteSource largeSource(large);
    std::vector<int64_t> percentages;
    readDriveLog(largeSource, obdDriveFormat, {},
        [&](int64_t done, int64_t all) { percentages.push_back(done * 100 / all); });
    EXPECT_EQ(percentages, (std::vector<int64_t>{38, 77, 100}));
    const TempFolder folder;
    const DriveLog none = readDriveLog(FilePlace::chosen(folder.path("none")), obdDriveFormat);
    EXPECT_EQ(none.end(), DriveLogEnd::notThere);
    EXPECT_EQ(none.openError().code, ENOENT);
    EXPECT_EQ(readDriveLog(FilePlace::chosen(folder.path()), obdDriveFormat).end(), DriveLogEnd::refused);
}

} // namespace
