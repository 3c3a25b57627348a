#include "common/PatientFile.h"
#include "tests/support/HungFile.h"
#include "tests/support/Testing.h"

#include <future>
#include <thread>

namespace {

std::ptrdiff_t openDescriptors()
{
    return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

TEST(PatientFile, ReadsWhatIsThereAndSaysWhyNot)
{
    const TempFolder folder;
    PatientFile file(folder.file("film.avi", "0123456789"));
    EXPECT_EQ(file.size(), 10);
    char bytes[100] = {};
    EXPECT_EQ(file.read(4, bytes, sizeof bytes), 6);
    EXPECT_STREQ(bytes, "456789");
    EXPECT_EQ(file.read(10, bytes, sizeof bytes), 0);
    EXPECT_EQ(file.failure(), "");
    EXPECT_EQ(file.read(uint64_t(1) << 63, bytes, sizeof bytes), -1) << "the device refuses";
    EXPECT_NE(file.failure(), "");

    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    for (const auto& [path, why] : {std::pair(folder.path("pipe"), "It is not a plain file"),
             {folder.path(), "It is a folder"}, {folder.path("gone"), "No such file or directory"},
             {folder.file("empty"), "The file is empty"}}) {
        PatientFile other(path);
        EXPECT_EQ(other.size(), -1);
        EXPECT_EQ(other.read(0, bytes, sizeof bytes), -1);
        EXPECT_EQ(other.failure(), why);
    }
}

TEST(PatientFile, GivingUpEndsTheWaitAndNothingStaysOpen)
{
    const TempFolder folder;
    const std::string path = folder.file("film.avi", "0123456789");
    const auto before = openDescriptors();
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(PatientFile(path).size(), 10);
    for (const auto end = std::chrono::steady_clock::now() + 20s;
         openDescriptors() > before && std::chrono::steady_clock::now() < end;)
        std::this_thread::yield();
    EXPECT_LE(openDescriptors(), before) << "files of other tests may be closed meanwhile";

    // One that no thread from before may still have open.
    const std::string hungPath = folder.file("hung.avi", "0123456789");
    const HungFile hung(hungPath);
    ASSERT_TRUE(hung.isHung);
    PatientFile file(hungPath);
    auto size = std::async(std::launch::async, [&file] { return file.size(); });
    EXPECT_EQ(size.wait_for(50ms), std::future_status::timeout);
    file.giveUp();
    ASSERT_EQ(size.wait_for(20s), std::future_status::ready);
    EXPECT_EQ(size.get(), -1);
}

} // namespace
