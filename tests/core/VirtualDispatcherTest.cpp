#include "tests/support/VirtualDispatcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class VirtualDispatcherTest : public testing::Test {
protected:
    platform::Dispatcher::Work note(std::string text)
    {
        return [this, text] { notes.push_back(text + "@" + std::to_string(dispatcher.now().count())); };
    }

    VirtualDispatcher dispatcher;
    std::vector<std::string> notes;
};

TEST_F(VirtualDispatcherTest, RunsWorkOnlyWhenToldAndInOrder)
{
    dispatcher.onMain([this] {
        notes.push_back("first");
        dispatcher.onMain(note("posted by first"));
    });
    dispatcher.onMain(note("second"));
    dispatcher.inBackground([this] { dispatcher.onMain(note("handed over")); });
    dispatcher.inBackground(note("background"));
    EXPECT_THAT(notes, IsEmpty());

    EXPECT_EQ(dispatcher.runMain(), 3u);
    EXPECT_THAT(notes, ElementsAre("first", "second@0", "posted by first@0"));
    notes.clear();
    EXPECT_TRUE(dispatcher.runOneBackground());
    EXPECT_THAT(notes, IsEmpty());
    EXPECT_EQ(dispatcher.runAll(), 2u);
    EXPECT_THAT(notes, ElementsAre("handed over@0", "background@0"));
    EXPECT_FALSE(dispatcher.runOneBackground());
}

TEST_F(VirtualDispatcherTest, FiresInTheOrderOfTime)
{
    dispatcher.after(30ms, note("c"));
    dispatcher.after(10ms, [this] {
        notes.push_back("a");
        dispatcher.onMain(note("posted by a"));
        dispatcher.after(5ms, note("b"));
    });
    dispatcher.after(30ms, note("d"));
    dispatcher.after(0ms, note("now"));
    const auto timer = dispatcher.every(20ms, note("tick"));
    dispatcher.inBackground(note("never"));
    dispatcher.runMain();
    EXPECT_THAT(notes, ElementsAre("now@0"));
    dispatcher.advance(29ms);
    EXPECT_THAT(notes, ElementsAre("now@0", "a", "posted by a@10", "b@15", "tick@20"));
    notes.clear();
    dispatcher.advance(31ms);
    EXPECT_THAT(notes, ElementsAre("c@30", "d@30", "tick@40", "tick@60"));
    EXPECT_EQ(dispatcher.now(), 60ms);
}

TEST_F(VirtualDispatcherTest, StopsATimerThatIsDestroyedEvenByItself)
{
    std::unique_ptr<platform::Timer> own;
    own = dispatcher.every(10ms, [&, text = std::string("long enough to live on the heap")] {
        own.reset();
        notes.push_back(text);
    });
    std::unique_ptr<platform::Timer> other = dispatcher.every(20ms, note("other"));
    dispatcher.after(20ms, [&] { other.reset(); });
    dispatcher.advance(100ms);
    EXPECT_THAT(notes, ElementsAre("long enough to live on the heap", "other@20"));
    EXPECT_EQ(dispatcher.pendingTimers(), 0u);
}

} // namespace
