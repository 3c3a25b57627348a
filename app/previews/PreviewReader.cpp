#include "app/previews/PreviewReader.h"

#include "platform/Previews.h"

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

namespace {

/// A hand that rests a moment does not have the file opened again.
constexpr std::chrono::milliseconds idleTime(1500);

/// Cameras have a key frame about every second. An older picture is of a file that ends before the moment.
constexpr double oldestPicture = 10; // seconds

QImage imageOf(const std::optional<platform::PreviewPicture>& picture, double seconds)
{
    if (!picture || picture->seconds < seconds - oldestPicture || picture->width <= 0 || picture->height <= 0
        || picture->pixels.size() < size_t(picture->width) * size_t(picture->height) * 3)
        return {};
    return QImage(
        picture->pixels.data(), picture->width, picture->height, picture->width * 3, QImage::Format_RGB888)
        .convertToFormat(QImage::Format_RGB32);
}

} // namespace

/// Used by one job at a time; a job that reads may outlive the reader.
struct PreviewReader::Source {
    explicit Source(std::unique_ptr<platform::Previews> made)
        : previews(std::move(made))
    {
    }

    QImage read(const PreviewRequest& request, const std::stop_token& token)
    {
        const std::lock_guard lock(mutex);
        // What waited here may be void; the file stays closed then.
        if (token.stop_requested())
            return {};
        return imageOf(
            previews->pictureAt(request.path, request.seconds, request.width, token), request.seconds);
    }
    void close()
    {
        const std::lock_guard lock(mutex);
        previews->close();
    }

    std::mutex mutex;
    std::unique_ptr<platform::Previews> previews;
};

PreviewReader::PreviewReader(platform::Dispatcher& queues, std::unique_ptr<platform::Previews> made)
    : dispatcher(queues),
      source(made ? std::make_shared<Source>(std::move(made)) : nullptr)
{
}

PreviewReader::~PreviewReader()
{
    stop.request_stop();
}

void PreviewReader::listen(Use use, std::function<void(const PreviewRequest&)> told)
{
    deskOf(use).told = std::move(told);
}

const QImage* PreviewReader::picture(Use use, const PreviewRequest& request) const
{
    return desks[size_t(use)].known.object(request);
}

void PreviewReader::want(Use use, std::vector<PreviewRequest> requests)
{
    Desk& desk = deskOf(use);
    desk.wanted = std::move(requests);
    std::erase_if(desk.wanted, [&](const PreviewRequest& request) { return desk.known.contains(request); });
    if (reading && !isReadingOfUse())
        stop.request_stop();
    readNext();
}

/// A file that hangs does not hold up another one at which the hand points, nor goes on for nobody.
bool PreviewReader::isReadingOfUse() const
{
    const auto& hand = desks[size_t(Use::hand)].wanted;
    if (!hand.empty())
        return hand.front().path == reading->path;
    return std::ranges::find(desks[size_t(Use::rows)].wanted, *reading)
        != desks[size_t(Use::rows)].wanted.end();
}

void PreviewReader::readNext()
{
    if (reading || !source)
        return;
    for (const Use use : {Use::hand, Use::rows}) {
        if (const auto& wanted = deskOf(use).wanted; !wanted.empty())
            return read(use, wanted.front());
    }
}

void PreviewReader::read(Use use, const PreviewRequest& request)
{
    reading = request;
    mayBeOpen = true;
    idle.renew();
    stop = {};
    dispatcher.inBackgroundThen(
        [from = source, request, token = stop.get_token()] { return from->read(request, token); },
        life.guarded([this, use, request](const QImage& picture) { arrived(use, request, picture); }));
}

void PreviewReader::arrived(Use use, const PreviewRequest& request, const QImage& picture)
{
    reading.reset();
    Desk& desk = deskOf(use);
    // What was given up for the hand's sake stays wanted.
    const bool wasGivenUp = picture.isNull() && stop.stop_requested();
    if (!wasGivenUp) {
        std::erase(desk.wanted, request);
        if (!picture.isNull() || use == Use::rows)
            desk.known.insert(request, new QImage(picture), std::max<qsizetype>(picture.sizeInBytes(), 1));
        if (desk.told)
            desk.told(request);
    }
    readNext();
    closeWhenIdle();
}

void PreviewReader::closeWhenIdle()
{
    if (!reading)
        dispatcher.after(idleTime, idle.guarded([this] { closeFile(); }));
}

void PreviewReader::closeFile()
{
    if (std::exchange(mayBeOpen, false))
        dispatcher.inBackground([from = source] { from->close(); });
}

void PreviewReader::clear()
{
    stop.request_stop();
    life.renew();
    idle.renew();
    reading.reset();
    for (Desk& desk : desks) {
        desk.wanted.clear();
        desk.known.clear();
    }
    closeFile();
}
