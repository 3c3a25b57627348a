#include "common/Log.h"
#include "media/ZVKMediaList.h"
#include "tests/support/TempFolder.h"
#include "tests/support/VirtualDispatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dirent.h>
#include <dlfcn.h>

#include <cerrno>

namespace {

/// Called before every entry that a folder gives; false makes the read fail.
std::function<bool()> beforeReaddir;

/// Sets the hook for as long as it lives.
struct ReaddirHook {
    explicit ReaddirHook(std::function<bool()> hook) { beforeReaddir = std::move(hook); }
    ~ReaddirHook() { beforeReaddir = {}; }
};

} // namespace

// Stands before the C library's, also for the standard library's folder iterators: a card that is pulled
// while it is being listed, and whatever else happens in the middle of a walk.
extern "C" dirent* readdir(DIR* folder)
{
    static const auto real = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    if (beforeReaddir && !beforeReaddir()) {
        errno = EIO;
        return nullptr;
    }
    return real(folder);
}

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class MediaListScan : public testing::Test, public ZVKMediaListDelegate {
protected:
    MediaListScan()
    {
        oldCard.file("alwa_20150101_000000.avi");
        newCard.file("alwa_20160101_000000.avi");
        newCard.file("alwa_20160101_000001.avi");
        list->setDelegate(this);
    }

    void mediaListChanged(ZVKMediaList& changed) override { told.push_back(namesOf(changed)); }

    static std::vector<std::string> namesOf(const ZVKMediaList& of)
    {
        std::vector<std::string> names;
        for (int64_t i = 0; i < of.count(); ++i)
            names.emplace_back(of.mediaAtIndex(i)->mediaName());
        return names;
    }

    TempFolder oldCard;
    TempFolder newCard;
    const std::vector<std::string> oldNames = {"alwa_20150101_000000"};
    const std::vector<std::string> newNames = {"alwa_20160101_000000", "alwa_20160101_000001"};

    VirtualDispatcher dispatcher;
    std::unique_ptr<ZVKMediaList> list = ZVKMediaList::mediaList(dispatcher);
    std::vector<std::vector<std::string>> told; // what the delegate saw each time
};

TEST_F(MediaListScan, ReplacesTheEntriesInOneStepOnTheMainThread)
{
    list->setDirectoryPath(oldCard.path());
    EXPECT_EQ(list->count(), 0);
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(oldNames));

    list->setDirectoryPath(newCard.path());
    EXPECT_EQ(list->directoryPath(), newCard.path());
    dispatcher.runBackground();
    EXPECT_EQ(namesOf(*list), oldNames);
    dispatcher.runMain();
    EXPECT_THAT(told, ElementsAre(oldNames, newNames));

    list->setDirectoryPath(newCard.path("missing"));
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(oldNames, newNames, testing::IsEmpty()));
}

TEST_F(MediaListScan, IsVoidOnceANewerPathIsSet)
{
    list->setDirectoryPath(oldCard.path());
    list->setDirectoryPath(newCard.path()); // before the walk
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(newNames));

    list->setDirectoryPath(oldCard.path());
    dispatcher.runBackground();
    list->setDirectoryPath(newCard.path()); // after the walk
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(newNames, newNames));

    list->setDirectoryPath(oldCard.path());
    dispatcher.runBackground();
    list->setDirectoryPath(std::nullopt);
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(newNames, newNames)) << "no path tells nobody";
    EXPECT_EQ(namesOf(*list), newNames) << "and leaves the entries";
    EXPECT_EQ(list->directoryPath(), std::nullopt);
}

TEST_F(MediaListScan, StopsEarlyWhenItBecomesVoid)
{
    for (int i = 0; i < 100; ++i)
        oldCard.file("folder" + std::to_string(i) + "/notes.txt");
    for (const bool isDestroyed : {false, true}) {
        SCOPED_TRACE(isDestroyed);
        list->setDirectoryPath(oldCard.path());
        int reads = 0;
        const ReaddirHook hook([&] {
            if (++reads == 10)
                isDestroyed ? list.reset() : list->setDirectoryPath(std::nullopt);
            return true;
        });
        dispatcher.runAll();
        EXPECT_EQ(reads, 10);
        EXPECT_TRUE(told.empty());
    }
}

TEST_F(MediaListScan, OutlivesItsList)
{
    for (const bool hasWalked : {false, true}) {
        list = ZVKMediaList::mediaList(dispatcher);
        list->setDelegate(this);
        list->setDirectoryPath(newCard.path());
        if (hasWalked)
            dispatcher.runBackground();
        list.reset();
        dispatcher.runAll();
        EXPECT_TRUE(told.empty());
    }
}

TEST_F(MediaListScan, ListsWhatWasFoundBeforeTheCardWasPulled)
{
    for (int i = 10; i < 20; ++i)
        newCard.file("Movie" + std::to_string(i) + "/event_20160101_0000" + std::to_string(i) + ".avi");
    int readsOfAll = 0;
    {
        const ReaddirHook hook([&] { return ++readsOfAll; });
        ASSERT_EQ(ZVKMediaList::sortedMedias(newCard.path()).size(), 12u);
    }
    size_t most = 0;
    for (int pulledAt = 1; pulledAt <= readsOfAll; ++pulledAt) {
        SCOPED_TRACE(pulledAt);
        int reads = 0;
        const ReaddirHook hook([&] { return ++reads < pulledAt; });
        std::vector<std::string> log;
        const LogSink before = setLogSink([&](std::string_view line) { log.emplace_back(line); });
        list->setDirectoryPath(newCard.path());
        dispatcher.runAll();
        setLogSink(before);
        ASSERT_EQ(told.size(), static_cast<size_t>(pulledAt));
        EXPECT_THAT(log, ElementsAre(HasSubstr("Input/output error")));
        EXPECT_GE(told.back().size(), most)
            << "what was found once stays found when the card holds out longer";
        most = told.back().size();
    }
    EXPECT_EQ(most, 12u);
}

} // namespace
