#include "tools/samplecard/CardMaker.h"
#include "tools/samplecard/CardStamp.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace fs = std::filesystem;

using testing::HasSubstr;

namespace {

void write(const fs::path& file, const std::string& text)
{
    fs::create_directories(file.parent_path());
    std::ofstream(file) << text;
}

std::vector<std::string> allIn(const fs::path& folder)
{
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        names.push_back(entry.path().lexically_relative(folder).generic_string());
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

/// A folder of its own and an `ffmpeg` that only complains.
class SampleCardFolder : public testing::Test {
protected:
    SampleCardFolder()
    {
        std::string name = (fs::temp_directory_path() / "samplecard.XXXXXX").string();
        m_root = mkdtemp(name.data());
        const fs::path program = m_root / "bin" / "ffmpeg";
        write(program, "#!/bin/sh\ncat > /dev/null\necho first >&2\necho no such codec >&2\nexit 1\n");
        fs::permissions(program, fs::perms::owner_all);
        setenv("PATH", (program.parent_path().string() + ":" + m_path).c_str(), 1);
    }
    ~SampleCardFolder() override
    {
        setenv("PATH", m_path.c_str(), 1);
        fs::remove_all(m_root);
    }

    std::string make(bool force = false)
    {
        const samplecard::CardOptions options{card(), 1, force};
        return samplecard::makeCard(options, m_stopped, [](const std::string&) {}).value_or("made");
    }
    fs::path card() const { return m_root / "place" / "card"; }
    fs::path place() const { return m_root / "place"; }

    std::atomic<bool> m_stopped = false;

private:
    std::string m_path = std::getenv("PATH");
    fs::path m_root;
};

TEST_F(SampleCardFolder, LeavesNothingBehindWhenTheEncoderFails)
{
    write(card() / "old.txt", "old");
    ASSERT_TRUE(samplecard::CardStamp::write(card(), "samplecard 0 of before"));
    const auto before = allIn(place());
    EXPECT_THAT(make(), HasSubstr("no such codec"));
    EXPECT_EQ(allIn(place()), before);
    setenv("PATH", "/nowhere", 1);
    EXPECT_THAT(make(), HasSubstr("is it installed?"));
    EXPECT_EQ(allIn(place()), before);
    m_stopped = true;
    EXPECT_EQ(make(), "interrupted");
    EXPECT_EQ(allIn(place()), before);
}

TEST_F(SampleCardFolder, RefusesFoldersOfOthers)
{
    write(card() / "holiday.avi", "mine");
    EXPECT_THAT(make(), HasSubstr("is no sample card"));
    EXPECT_THAT(make(true), HasSubstr("is no sample card"));
    write(card() / ".samplecard", "some other text\n");
    EXPECT_THAT(make(true), HasSubstr("is no sample card"));
    EXPECT_EQ(allIn(place()), (std::vector<std::string>{"card", "card/.samplecard", "card/holiday.avi"}));
}

TEST_F(SampleCardFolder, AsksBeforeItDropsWhatSomebodyAdded)
{
    write(card() / "AlwaysMovie" / "a.avi", "12345");
    ASSERT_TRUE(samplecard::CardStamp::write(card(), "samplecard 0 of before"));
    write(card() / "holiday.avi", "mine");
    EXPECT_THAT(make(), HasSubstr("holiday.avi"));
    EXPECT_THAT(make(true), HasSubstr("no such codec")); // it went on
}

TEST_F(SampleCardFolder, KnowsAWholeCardByItsFiles)
{
    write(card() / "AlwaysMovie" / "a b.avi", "12345");
    ASSERT_TRUE(samplecard::CardStamp::write(card(), "samplecard 7"));
    const auto stamp = samplecard::CardStamp::read(card());
    ASSERT_TRUE(stamp);
    EXPECT_TRUE(stamp->isIntact(card()));
    write(card() / "AlwaysMovie" / "a b.avi", "1234");
    EXPECT_FALSE(stamp->isIntact(card()));
    fs::remove(card() / "AlwaysMovie" / "a b.avi");
    EXPECT_FALSE(stamp->isIntact(card()));
}
