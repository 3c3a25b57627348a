#include "common/FilePlace.h"
#include "tools/samplecard/AviContainer.h"
#include "tools/samplecard/CardSteps.h"
#include "tools/samplecard/Encoder.h"
#include "tools/samplecard/Lens.h"
#include "tools/samplecard/RecordingPlan.h"
#include "tools/samplecard/Sound.h"
#include "tools/samplecard/Telemetry.h"

#include <fstream>
#include <future>
#include <mutex>

namespace samplecard {

namespace {

namespace fs = std::filesystem;

using Failure = std::optional<std::string>;

constexpr int workerCount = 2;

template <typename Value> bool writeAll(const fs::path& file, const std::vector<Value>& values)
{
    std::ofstream out(file, std::ios::binary);
    out.write(reinterpret_cast<const char*>(values.data()), std::streamsize(values.size() * sizeof(Value)));
    return bool(out.flush());
}

/// Makes recordings, one after the other, on one thread.
class RecordingMaker {
public:
    RecordingMaker(const CardWork& work, const Scenery& front, const Scenery& rear)
        : shared(work),
          frontScene(work.drive, front, Camera::front),
          rearScene(work.drive, rear, Camera::rear)
    {
    }

    Failure make(const Recording& recording)
    {
        const fs::path encoded = shared.scratch / recording.name;
        if (Failure failure = encode(recording, encoded.string()))
            return failure;
        FileError why;
        const auto made = wholeFile(encoded.native(), why);
        if (!made)
            return "what ffmpeg made cannot be read: " + why.text();
        const auto bytes = std::as_bytes(std::span(*made));
        std::vector<std::byte> avi(bytes.begin(), bytes.end());
        if (Failure failure =
                embedSideData(avi, telemetryOf(shared.drive, recording.start, recording.seconds)))
            return "ffmpeg made a file that cannot be used: " + *failure;
        std::error_code ignored;
        fs::remove(encoded, ignored);
        if (!writeAll(shared.card / recording.folder / recording.name, avi))
            return "cannot be written (is the disk full?)";
        return std::nullopt;
    }

private:
    Failure encode(const Recording& recording, const std::string& output)
    {
        const std::string sound = output + ".pcm";
        if (!writeAll(sound, soundOf(shared.drive, recording.start, recording.seconds)))
            return "cannot write the sound (is the disk full?)";
        Scene& scene = recording.camera == Camera::front ? frontScene : rearScene;
        Encoder encoder;
        if (!encoder.start({scene.width(), scene.height(), sound, soundRate, output, output + ".txt"}))
            return "ffmpeg cannot be started: is it installed?";
        const int pictures = recording.seconds * Encoder::picturesPerSecond;
        for (int n = 0; n < pictures; ++n) {
            if (shared.stopped)
                return "interrupted";
            toYuv420(scene.render(recording.start + double(n) / Encoder::picturesPerSecond), planes);
            if (!encoder.write(planes))
                break; // its exit says why
        }
        return encoder.finish();
    }

    const CardWork& shared;
    Scene frontScene;
    Scene rearScene;
    std::vector<uint8_t> planes;
};

} // namespace

Failure addRecordings(const CardWork& work)
{
    auto frontScenery = std::async(std::launch::async, [] { return std::make_unique<Scenery>(1280, 720); });
    const Scenery rear(854, 480);
    const std::unique_ptr<const Scenery> front = frontScenery.get();
    const std::vector<Recording> plan = planRecordings(work.drive, work.seconds);
    std::mutex mutex;
    size_t next = 0;
    Failure failure;
    const auto makeSome = [&] {
        RecordingMaker maker(work, *front, rear);
        for (;;) {
            std::unique_lock lock(mutex);
            if (failure || next == plan.size())
                return;
            const Recording& recording = plan[next++];
            lock.unlock();
            Failure why = maker.make(recording);
            lock.lock();
            if (why && !failure)
                failure = recording.name + ": " + *why;
            else if (!why)
                work.tell("  " + recording.folder + "/" + recording.name);
        }
    };
    std::vector<std::future<void>> workers;
    for (int n = 0; n < workerCount; ++n)
        workers.push_back(std::async(std::launch::async, makeSome));
    for (auto& worker : workers)
        worker.get();
    return failure;
}

} // namespace samplecard
