#pragma once

#include "common/Life.h"
#include "platform/Dispatcher.h"

#include <QCache>
#include <QImage>

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace platform {
class Previews;
}

/// A moment in a recording as a picture of that width in pixels; there is none where the file ends before it.
struct PreviewRequest {
    std::string path;
    double seconds = 0;
    int width = 0;

    bool operator==(const PreviewRequest&) const = default;
    friend size_t qHash(const PreviewRequest& request, size_t seed)
    {
        return qHashMulti(seed, std::hash<std::string>()(request.path), request.seconds, request.width);
    }
};

/// Small pictures of recordings, read in the background one at a time: what the hand points at before what
/// rows want, and of each only the latest wishes. The pictures used last are kept. A file that is no longer
/// read is closed after a moment, so that the card can be unmounted. Main thread only.
class PreviewReader {
public:
    enum class Use { hand, rows };
    /// Of each use, in bytes.
    static constexpr size_t bytesKept = size_t(16) << 20;

    /// Without a source there are no pictures.
    PreviewReader(platform::Dispatcher& dispatcher, std::unique_ptr<platform::Previews> source);
    ~PreviewReader();

    /// `told` is called when a picture of that use was read or cannot be had, also one that nobody wants any
    /// more.
    void listen(Use use, std::function<void(const PreviewRequest& request)> told);
    /// These are wanted now, the first one first; earlier wishes of that use are void.
    void want(Use use, std::vector<PreviewRequest> requests);
    /// Null until it was read, and once it is no longer kept. A null picture: there is none. What the hand
    /// pointed at in vain is tried again.
    const QImage* picture(Use use, const PreviewRequest& request) const;
    /// Everything is void: no wish, no picture; the file is closed. Does not wait.
    void clear();

private:
    struct Source;
    struct Desk {
        std::vector<PreviewRequest> wanted;
        QCache<PreviewRequest, QImage> known{bytesKept};
        std::function<void(const PreviewRequest&)> told;
    };
    Desk& deskOf(Use use) { return desks[size_t(use)]; }
    bool isReadingOfUse() const;
    void readNext();
    void read(Use use, const PreviewRequest& request);
    void arrived(Use use, const PreviewRequest& request, const QImage& picture);
    void closeWhenIdle();
    void closeFile();

    platform::Dispatcher& dispatcher;
    std::shared_ptr<Source> source;
    std::array<Desk, 2> desks;
    std::optional<PreviewRequest> reading;
    std::stop_source stop; // of what is being read
    bool mayBeOpen = false;
    Life life; // of the pictures since the latest `clear`
    Life idle; // since the latest read
};
