#include "app/previews/PreviewReader.h"
#include "tests/support/GuiTesting.h"
#include "tests/support/ScriptedPreviews.h"

namespace {

using Calls = std::vector<std::string>;
using Use = PreviewReader::Use;

class PreviewReaderTest : public testing::Test {
protected:
    PreviewReaderTest()
    {
        for (const Use use : {Use::hand, Use::rows})
            reader.listen(use, [this](const PreviewRequest& request) { told.push_back(request.path); });
    }
    static PreviewRequest at(const char* path, double seconds = 1, int width = 160)
    {
        return {path, seconds, width};
    }
    bool has(Use use, const PreviewRequest& request) const
    {
        const QImage* picture = reader.picture(use, request);
        return picture && !picture->isNull();
    }

    VirtualDispatcher dispatcher;
    ScriptedPreviews::Log log;
    Calls told;
    PreviewReader reader{dispatcher, std::make_unique<ScriptedPreviews>(log)};
};

TEST_F(PreviewReaderTest, ReadsTheHandsLatestWishBeforeRows)
{
    reader.want(Use::rows, {at("a"), at("b"), at("c")});
    reader.want(Use::hand, {at("film", 1)});
    reader.want(Use::hand, {at("film", 2)});
    reader.want(Use::rows, {at("b"), at("d")});
    dispatcher.runAll();
    // What nobody wants by the time its job runs is not read at all.
    EXPECT_EQ(log.calls, (Calls{"film 2.00", "b 1.00", "d 1.00"}));
    EXPECT_EQ(told, (Calls{"film", "b", "d"}));
    reader.want(Use::hand, {at("film", 2)});
    reader.want(Use::rows, {at("d")});
    dispatcher.runAll();
    EXPECT_EQ(log.calls.size(), 3u) << "they are known";
}

TEST_F(PreviewReaderTest, KeepsThePicturesUsedLastWithinItsBound)
{
    const int large = 1920; // two of them have room
    for (const char* path : {"a", "b"}) {
        reader.want(Use::hand, {at(path, 1, large)});
        dispatcher.runAll();
    }
    EXPECT_TRUE(has(Use::hand, at("a", 1, large)));
    reader.want(Use::hand, {at("c", 1, large)});
    dispatcher.runAll();
    EXPECT_TRUE(has(Use::hand, at("a", 1, large)));
    EXPECT_FALSE(has(Use::hand, at("b", 1, large)));
    EXPECT_TRUE(has(Use::hand, at("c", 1, large)));
}

TEST_F(PreviewReaderTest, ClearVoidsWhatIsUnderWayAndClosesTheFile)
{
    reader.want(Use::rows, {at("a"), at("b")});
    reader.clear();
    dispatcher.runAll();
    EXPECT_EQ(log.calls, Calls{"close"}) << "nothing opens a file once it was let go of";
    reader.want(Use::rows, {at("a"), at("b")});
    log.meanwhile = [this] { reader.clear(); };
    dispatcher.runAll();
    EXPECT_EQ(log.calls, (Calls{"close", "a 1.00", "close"}));
    reader.want(Use::hand, {at("a")});
    dispatcher.runBackground();
    reader.clear(); // the picture is on its way
    dispatcher.runAll();
    EXPECT_EQ(reader.picture(Use::hand, at("a")), nullptr);
    EXPECT_EQ(log.calls.back(), "close");
    EXPECT_TRUE(told.empty());
}

TEST_F(PreviewReaderTest, AFileThatHangsHoldsUpNoOther)
{
    reader.want(Use::rows, {at("slow"), at("b")});
    log.meanwhile = [this] { reader.want(Use::hand, {at("film")}); };
    dispatcher.runAll();
    EXPECT_EQ(log.calls, (Calls{"slow 1.00", "film 1.00", "slow 1.00", "b 1.00"})) << "and has its turn";
    reader.want(Use::hand, {at("film", 30)});
    log.meanwhile = [this] { reader.want(Use::hand, {}); };
    dispatcher.runAll();
    EXPECT_FALSE(has(Use::hand, at("film", 30))) << "given up, the hand has left";
    log.unreadable = {"broken"};
    reader.want(Use::rows, {at("broken")});
    reader.want(Use::hand, {at("broken")});
    dispatcher.runAll();
    ASSERT_TRUE(reader.picture(Use::rows, at("broken")));
    EXPECT_TRUE(reader.picture(Use::rows, at("broken"))->isNull());
    EXPECT_EQ(std::ranges::count(log.calls, "broken 1.00"), 2) << "each once";
}

TEST_F(PreviewReaderTest, ClosesTheFileWhenNobodyReadsForAMoment)
{
    reader.want(Use::hand, {at("a")});
    dispatcher.runAll();
    dispatcher.advance(1s);
    reader.want(Use::hand, {at("a", 2)});
    dispatcher.runAll();
    dispatcher.advance(1s);
    dispatcher.runAll();
    EXPECT_EQ(std::ranges::count(log.calls, "close"), 0);
    dispatcher.advance(1s);
    dispatcher.runAll();
    dispatcher.advance(10s);
    dispatcher.runAll();
    EXPECT_EQ(std::ranges::count(log.calls, "close"), 1);
}

} // namespace
