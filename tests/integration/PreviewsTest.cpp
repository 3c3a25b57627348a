#include "platform/Previews.h"
#include "app/previews/PreviewReader.h"
#include "platform/av/AvPreviews.h"
#include "platform/disks/OpenFiles.h"
#include "platform/qt/QtDispatcher.h"
#include "tests/support/HungFile.h"
#include "tests/support/RealPlayer.h"

namespace {

/// The picture's number is its lightness.
void numbered(const std::string& path, const QStringList& options)
{
    QProcess::execute("ffmpeg",
        QStringList{"-v", "error", "-y", "-f", "lavfi", "-i",
            "nullsrc=size=320x180:rate=30:duration=4,geq=lum='40+N':cb=128:cr=128"}
            + options + QStringList{QString::fromStdString(path)});
}

class PreviewsTest : public testing::Test {
protected:
    std::optional<PreviewPicture> at(double seconds, const std::string& path)
    {
        return previews->pictureAt(path, seconds, 160, stop.get_token());
    }
    /// The number of the picture that is shown.
    static double shown(const PreviewPicture& picture)
    {
        const size_t middle = (size_t(picture.height / 2) * picture.width + picture.width / 2) * 3;
        return picture.pixels.at(middle) * 219 / 255.0 + 16 - 40;
    }

    TempFolder folder;
    std::stop_source stop;
    std::unique_ptr<Previews> previews = makeAvPreviews();
};

TEST_F(PreviewsTest, ShowsTheKeyFrameBeforeTheMoment)
{
    const std::pair<const char*, QStringList> codecs[] = {
        {"h264.avi",
            {"-c:v", "libx264", "-qp", "4", "-g", "30", "-sc_threshold", "0", "-bf", "2", "-pix_fmt",
                "yuv420p"}},
        {"mpeg4.avi", {"-c:v", "mpeg4", "-q:v", "1", "-g", "30"}},
        {"mjpeg.avi", {"-c:v", "mjpeg", "-q:v", "2", "-pix_fmt", "yuvj420p"}}};
    for (const auto& [name, options] : codecs) {
        SCOPED_TRACE(name);
        const std::string path = folder.path(name);
        numbered(path, options);
        const bool areAllKeys = std::string_view(name) == "mjpeg.avi";
        for (const double seconds : {0.0, 2.5, 1.99, 3.02, 0.9, 99.0, -1.0, double(NAN)}) {
            SCOPED_TRACE(seconds);
            const auto picture = at(seconds, path);
            ASSERT_TRUE(picture);
            EXPECT_EQ(picture->width, 160);
            EXPECT_EQ(picture->height, 90);
            ASSERT_EQ(picture->pixels.size(), 160U * 90 * 3);
            const double moment = std::clamp(std::isnan(seconds) ? 0 : seconds, 0.0, 119 / 30.0);
            const double expected =
                areAllKeys ? std::floor(moment * 30 + 0.5) : std::floor(moment + 0.01) * 30;
            EXPECT_NEAR(shown(*picture), expected, areAllKeys ? 3 : 8);
            EXPECT_NEAR(picture->seconds, expected / 30, 0.11) << "it says which picture it is";
        }
    }
    EXPECT_FALSE(openFilesBelow(folder.path()).empty());
    previews->close();
    EXPECT_TRUE(waitFor([this] { return openFilesBelow(folder.path()).empty(); }));
}

TEST_F(PreviewsTest, DecodesOnlyWhatCamerasRecordAndGoesOnAfterwards)
{
    const std::string good = folder.path("good.avi");
    numbered(good, {"-c:v", "mpeg4", "-q:v", "1", "-g", "30"});
    const std::string whole = contents(good);
    numbered(folder.path("strange.avi"), {"-c:v", "ffv1", "-t", "0.2"});
    numbered(folder.path("film.mkv"), {"-c:v", "mpeg4", "-t", "0.2"});
    const auto data = whole.find("movi") + 4;
    for (const auto& path :
        {folder.path("missing.avi"), folder.path(), folder.file("empty.avi"), folder.path("strange.avi"),
            folder.path("film.mkv"), folder.file("header.avi", whole.substr(0, data)),
            folder.file("noise.avi", whole.substr(0, data) + std::string(100'000, '\x5a'))}) {
        SCOPED_TRACE(path);
        EXPECT_FALSE(at(0, path));
        EXPECT_FALSE(at(1, path));
        EXPECT_TRUE(at(1, good));
    }
    // Cut off: what is there is shown.
    const auto early = at(0.5, folder.file("cut.avi", whole.substr(0, data + (whole.size() - data) / 2)));
    ASSERT_TRUE(early);
    EXPECT_NEAR(shown(*early), 0, 3);
}

/// Beside a file that hangs.
class HungPreviewsTest : public PreviewsTest {
protected:
    HungPreviewsTest()
    {
        numbered(good, {"-c:v", "mpeg4", "-q:v", "1", "-g", "30"});
        fs::copy_file(good, folder.path("hung.avi"));
        hung.emplace(folder.path("hung.avi"));
    }
    const std::string good = folder.path("good.avi");
    std::optional<HungFile> hung;
};

TEST_F(HungPreviewsTest, GiveUpACardThatHangs)
{
    ASSERT_TRUE(hung->isHung);
    EXPECT_FALSE(at(1, folder.path("hung.avi"))) << "by itself";
    EXPECT_TRUE(at(1, good));
    stop.request_stop();
    EXPECT_TRUE(at(2, good)) << "what is quick comes nevertheless";
    EXPECT_FALSE(at(1, folder.path("hung.avi")));
}

TEST_F(HungPreviewsTest, ServeTheHandAndLetGoOfTheCard)
{
    ASSERT_TRUE(hung->isHung);
    platform::QtDispatcher dispatcher;
    PreviewReader reader(dispatcher, std::move(previews));
    const PreviewRequest wanted{good, 1, 160};
    reader.want(PreviewReader::Use::rows, {{folder.path("hung.avi"), 1, 160}});
    reader.want(PreviewReader::Use::hand, {wanted});
    ASSERT_TRUE(waitFor([&] { return reader.picture(PreviewReader::Use::hand, wanted); }));
    EXPECT_EQ(reader.picture(PreviewReader::Use::hand, wanted)->size(), QSize(160, 90));
    const auto openOnes = [&] {
        auto open = openFilesBelow(folder.path());
        std::erase(open, folder.path("hung.avi")); // the test's own
        return open;
    };
    reader.want(PreviewReader::Use::rows, {});
    reader.want(PreviewReader::Use::hand, {{good, 2, 160}});
    ASSERT_TRUE(waitFor([&] { return reader.picture(PreviewReader::Use::hand, {good, 2, 160}); }));
    EXPECT_FALSE(openOnes().empty());
    reader.clear();
    EXPECT_TRUE(waitFor([&] { return openOnes().empty(); }));
}

} // namespace
