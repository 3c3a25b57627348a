#include "platform/qt/QtDispatcher.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/WaitFor.h"

#include <future>
#include <latch>
#include <new>

TEST(QtDispatcher, WorkThatHangsOrFailsHoldsUpNoOther)
{
    constexpr int hungJobs = 40;
    std::latch isOver(1);
    std::promise<void> ran;
    auto hasRun = ran.get_future();
    platform::QtDispatcher dispatcher;
    bool isTold = false;
    dispatcher.setFailureHandler([&isTold] { isTold = true; });
    dispatcher.inBackground([] { throw std::bad_alloc(); });
    for (int i = 0; i < hungJobs; ++i)
        dispatcher.inBackground([&isOver] { isOver.wait(); });
    dispatcher.inBackground([&ran] { ran.set_value(); });
    EXPECT_EQ(hasRun.wait_for(20s), std::future_status::ready);
    isOver.count_down();
    EXPECT_TRUE(waitFor([&] { return isTold; })) << "on the main thread";
    EXPECT_TRUE(dispatcher.finish());
}
