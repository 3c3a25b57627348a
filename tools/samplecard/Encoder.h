#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace samplecard {

/// Runs `ffmpeg` and hands it raw pictures.
class Encoder {
public:
    static constexpr int picturesPerSecond = 30;

    struct Job {
        int width;
        int height;
        std::string soundFile; // raw 16-bit mono samples
        int soundRate;
        std::string outputFile; // its extension chooses the container
        std::string messageFile; // file for the encoder's messages
    };

    Encoder() = default;
    Encoder(const Encoder&) = delete;
    Encoder& operator=(const Encoder&) = delete;
    /// Stops an encoder that was not finished.
    ~Encoder();

    /// False when the program cannot be started.
    bool start(const Job& job);
    /// One picture, planar 4:2:0. False when the encoder has gone.
    bool write(std::span<const uint8_t> picture);
    /// Waits for the encoder. Returns nothing on success, else the last lines it wrote.
    std::optional<std::string> finish();

private:
    int wait();

    int input = -1;
    int child = -1;
    std::string messages;
};

} // namespace samplecard
