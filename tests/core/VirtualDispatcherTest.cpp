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

} // namespace
