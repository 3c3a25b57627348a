#include "cardtools/clock/TimeSet.h"
#include "tests/core/CliSupport.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

TEST(TimeSet, OneLineOfNineteenCharacters)
{
    const TimeSet moment{2016, 5, 3, 14, 22, 1};
    EXPECT_EQ(timeSetText(moment), "2016/05/03 14:22:01");
    EXPECT_EQ(timeSetFromText("2016/05/03 14:22:01"), moment);
    EXPECT_TRUE(timeSetFromText("2016/02/29 23:59:59"));
    for (const char* none : {"", "2015/02/29 00:00:00", "2016/04/31 00:00:00", "2016/13/01 00:00:00",
             "2016/00/01 00:00:00", "0000/01/01 00:00:00", "2016/05/03 24:00:00", "2016/05/03 14:60:01",
             "2016/05/03 14:22:60", "2016-05-03 14:22:01", "2016/5/3 14:22:01", "2016/05/03 14:22:01 ",
             "2016/05/03 14:22:+1", " 2016/05/03 14:22:01"})
        EXPECT_FALSE(timeSetFromText(none)) << none;
}

TEST(TimeSet, CommandWritesOverALongerFileAndReadsItBack)
{
    const TempFolder folder;
    const std::string before = "2011/11/11 11:11:11\nsomething that is much longer than a line\n";
    const std::string path = folder.file("timeset.cfg", before);
    EXPECT_EQ(zavikctl({"clock", path}).code, 1);
    EXPECT_EQ(zavikctl({"clock", path, "2016/02/30 00:00:00"}).code, 1);
    EXPECT_EQ(contents(path), before);
    EXPECT_EQ(zavikctl({"clock", path, "2016/05/03 14:22:01"}).code, 0);
    EXPECT_EQ(contents(path), "2016/05/03 14:22:01");
    EXPECT_EQ(zavikctl({"clock", path}).out, "2016/05/03 14:22:01\n");
    FileError why;
    EXPECT_TRUE(loadTimeSet(FilePlace::chosen(folder.file("edited.cfg", "2016/05/03 14:22:01\r\n")), why))
        << "one line end";
    EXPECT_FALSE(loadTimeSet(FilePlace::chosen(folder.file("edited.cfg", "2016/05/03 14:22:01\n\n")), why));
    EXPECT_FALSE(why) << "it can be read";
    EXPECT_FALSE(loadTimeSet(FilePlace::chosen(folder.path()), why));
    EXPECT_EQ(why.code, FileError::noPlainFile);
    EXPECT_EQ(zavikctl({"clock", folder.path("missing/timeset.cfg"), "2016/05/03 14:22:01"}).code, 1);
    EXPECT_EQ(zavikctl({"clock", folder.path(), "2016/05/03 14:22:01"}).code, 1);
}
