#include "tests/core/CliSupport.h"
#include "tests/support/DriveLogs.h"
#include "tests/support/Testing.h"

namespace {

const std::string row =
    ",65535,2015/03/21,07:05:09,SAT,3734.1234,12702.5000,123.4,61,99,A,-0.50,+1.00,+0.00,12.5\n";

TEST(CliDriveLog, WritesTheTitlesInEitherLanguageAndTheRecords)
{
    const TempFolder folder;
    const std::string drv = folder.file("zavik_000.drv", driveLogFile(std::vector(2, flashRecord())));
    const std::string obd = folder.file("LOG.OBD", driveLogFile(std::vector{obdRecord()}));
    EXPECT_EQ(zavikctl({"drive-log", drv}).out,
        "No.,Seq.,Date,Time,Day,Latitude,Longitude,Distance,Speed,Max.,GPS,X,Y,Z,Batt. V\n1" + row + "2"
            + row);
    EXPECT_TRUE(zavikctl({"drive-log", "--lang", "ko", drv}).out.starts_with("번호,순번,날짜,"));
    for (const std::string& log : {drv, obd})
        EXPECT_EQ(zavikctl({"drive-log", log, "--lang", "ko"}).out.find("setting."), std::string::npos);
    const Outcome other = zavikctl({"drive-log", obd, "--lang", "en"});
    EXPECT_EQ(other.code, 0);
    EXPECT_EQ(std::ranges::count(other.out, ','), 2 * 25);
}

TEST(CliDriveLog, OfACutFileWritesWhatIsWholeAndSaysSo)
{
    const TempFolder folder;
    std::vector<std::byte> file = driveLogFile(std::vector(2, flashRecord()));
    file.pop_back();
    const std::string cut = folder.file("cut.drv", file);
    const Outcome outcome = zavikctl({"drive-log", cut});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err, "zavikctl: " + cut + ": ends early: 1 of 2 records\n");
    EXPECT_TRUE(outcome.out.ends_with("\n1" + row));
}

TEST(CliDriveLog, SaysWhyThereIsNothing)
{
    const TempFolder folder;
    std::vector<std::byte> impossible = driveLogFile(std::vector{flashRecord()});
    std::fill_n(impossible.begin(), 4, std::byte{0xFF});
    // A regular file that cannot be read: the loopback device has no speed.
    fs::create_symlink("/sys/class/net/lo/speed", folder.path("failing.drv"));
    for (const auto& [path, why] : {std::pair(folder.file("empty.drv"), "is no drive log"),
             std::pair(folder.path("failing.drv"), "could not be read: input/output error"),
             std::pair(folder.file("a.drv", impossible), "announces more records than a file can hold"),
             std::pair(folder.path("none.obd"), "cannot be opened"),
             std::pair(folder.file("log.csv"), "is neither a .drv nor an .obd file")}) {
        const Outcome outcome = zavikctl({"drive-log", path});
        EXPECT_EQ(outcome.code, 1) << path;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "zavikctl: " + path + ": " + why + "\n");
    }
    EXPECT_EQ(zavikctl({"drive-log", "x.drv", "--lang"}).code, 2);
    EXPECT_EQ(zavikctl({"drive-log", "x.drv", "--lang", "fr"}).code, 2);
}

} // namespace
