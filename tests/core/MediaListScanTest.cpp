#include "media/ZVKMediaList.h"
#include "tests/support/Testing.h"
#include "tests/support/VirtualDispatcher.h"

#include <dirent.h>
#include <dlfcn.h>

#include <new>

namespace {

/// Called before every entry that a folder gives, with the folder's name; anything but 0 is the error with
/// which the read fails.
std::function<int(const std::string& folder)> beforeReaddir;

/// Sets the hook for as long as it lives.
struct ReaddirHook {
    explicit ReaddirHook(std::function<int(const std::string& folder)> hook)
    {
        beforeReaddir = std::move(hook);
    }
    ~ReaddirHook() { beforeReaddir = {}; }
};

} // namespace

// Stands before the C library's, also for the standard library's folder iterators: a card that is pulled
// while it is being listed, and whatever else happens in the middle of a walk.
extern "C" dirent* readdir(DIR* folder)
{
    static const auto real = reinterpret_cast<dirent* (*)(DIR*)>(dlsym(RTLD_NEXT, "readdir"));
    if (!beforeReaddir)
        return real(folder);
    const auto path = fs::read_symlink("/proc/self/fd/" + std::to_string(dirfd(folder)));
    const int error = beforeReaddir(path.filename());
    errno = error;
    return error == 0 ? real(folder) : nullptr;
}

namespace {

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
    EXPECT_THAT(namesOf(*list), IsEmpty()) << "neither the old ones nor some of the new";
    dispatcher.runMain();
    EXPECT_THAT(told, ElementsAre(oldNames, newNames));

    list->setDirectoryPath(newCard.path("missing"));
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(oldNames, newNames, IsEmpty()));
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
    EXPECT_EQ(list->directoryPath(), std::nullopt);

    list->setDirectoryPath(oldCard.path());
    dispatcher.runBackground();
    list.reset(); // between the walk and its result
    dispatcher.runAll();
    EXPECT_EQ(told.size(), 2u);
}

TEST_F(MediaListScan, StopsEarlyWhenItBecomesVoid)
{
    for (int i = 0; i < 100; ++i)
        oldCard.file("folder" + std::to_string(i) + "/notes.txt");
    for (const bool isDestroyed : {false, true}) {
        SCOPED_TRACE(isDestroyed);
        list->setDirectoryPath(oldCard.path());
        int reads = 0;
        const ReaddirHook hook([&](const std::string&) {
            if (++reads == 10)
                isDestroyed ? list.reset() : list->setDirectoryPath(std::nullopt);
            return 0;
        });
        dispatcher.runAll();
        EXPECT_EQ(reads, 10);
        EXPECT_TRUE(told.empty());
    }
}

TEST_F(MediaListScan, ListsWhatWasFoundBeforeTheCardWasPulled)
{
    for (int i = 10; i < 20; ++i)
        newCard.file("Movie" + std::to_string(i) + "/event_20160101_0000" + std::to_string(i) + ".avi");
    int readsOfAll = 0;
    {
        const ReaddirHook hook([&](const std::string&) { return ++readsOfAll, 0; });
        ASSERT_EQ(ZVKMediaList::scan(newCard.path()).medias.size(), 12u);
    }
    size_t most = 0;
    for (int pulledAt = 1; pulledAt <= readsOfAll; ++pulledAt) {
        SCOPED_TRACE(pulledAt);
        int reads = 0;
        const ReaddirHook hook([&](const std::string&) { return ++reads < pulledAt ? 0 : EIO; });
        const CollectedLog log;
        list->setDirectoryPath(newCard.path());
        dispatcher.runAll();
        ASSERT_EQ(told.size(), static_cast<size_t>(pulledAt));
        EXPECT_THAT(log.lines, ElementsAre(HasSubstr("Input/output error")));
        EXPECT_GE(told.back().size(), most)
            << "what was found once stays found when the card holds out longer";
        most = told.back().size();
        EXPECT_FALSE(list->scanState().isReadable) << "in a folder inside, too";
    }
    EXPECT_EQ(most, 12u);
}

TEST_F(MediaListScan, NamesWhatCouldNotBeRead)
{
    for (const char* folder : {"a/Private", "lost+found", "$Recycle.Bin", ".Trash-1000", "b"})
        newCard.file(std::string(folder) + "/alwa_20160101_000009.avi");
    fs::create_symlink("nothing", newCard.path("dangling"));
    using Errors = std::map<std::string, int>; // by folder
    const std::tuple<Errors, size_t, std::string> cases[] = {{{}, 0, ""},
        {{{"lost+found", EACCES}, {"$Recycle.Bin", EPERM}, {".Trash-1000", EACCES}}, 0, ""},
        {{{"lost+found", EIO}}, 1, "lost+found"},
        {{{"Private", EACCES}, {".Trash-1000", EACCES}}, 1, "a/Private"},
        {{{"Private", EACCES}, {"b", EIO}}, 2, ""}};
    for (const auto& [errors, count, first] : cases) {
        SCOPED_TRACE(testing::PrintToString(errors));
        const ReaddirHook hook([all = errors](const std::string& folder) mutable { return all[folder]; });
        const auto [medias, state] = ZVKMediaList::scan(newCard.path());
        EXPECT_TRUE(state.isReadable);
        EXPECT_EQ(state.unreadCount, count);
        EXPECT_EQ(count < 2 ? state.unread : "", first);
        EXPECT_EQ(state.failure.empty(), count == 0);
        EXPECT_EQ(medias.size(), 7 - errors.size());
    }
}

TEST_F(MediaListScan, TellsWhenThereIsNotEnoughMemory)
{
    const ReaddirHook hook([](const std::string&) -> int { throw std::bad_alloc(); });
    list->setDirectoryPath(newCard.path());
    dispatcher.runAll();
    EXPECT_THAT(told, ElementsAre(IsEmpty()));
    EXPECT_FALSE(list->scanState().isReadable);
}

} // namespace
