#include "tools/samplecard/Encoder.h"

#include "common/FilePlace.h"
#include "common/Log.h"

#include <cerrno>
#include <deque>
#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace samplecard {

namespace {

constexpr size_t lastLineCount = 4;

std::vector<std::string> arguments(const Encoder::Job& job)
{
    std::vector<std::string> list{"ffmpeg", "-hide_banner", "-nostdin", "-loglevel", "error", "-y"};
    const auto add = [&list](std::initializer_list<std::string> more) { list.insert(list.end(), more); };
    // Relative names could begin with a dash or look like a protocol.
    add({"-f", "s16le", "-ar", std::to_string(job.soundRate), "-ac", "1", "-i", "file:" + job.soundFile});
    add({"-f", "rawvideo", "-pix_fmt", "yuv420p", "-color_range", "tv", "-colorspace", "bt709"});
    add({"-video_size", formatted("%dx%d", job.width, job.height)});
    add({"-framerate", std::to_string(Encoder::picturesPerSecond), "-i", "pipe:0"});
    add({"-map", "1:v", "-map", "0:a", "-c:v", "libx264", "-preset", "ultrafast"});
    add({"-bf", "0", "-g", std::to_string(Encoder::picturesPerSecond), "-threads", "1"});
    add({"-crf", "25", "-maxrate", "6M", "-bufsize", "6M", "-pix_fmt", "yuv420p"});
    add({"-colorspace", "bt709", "-color_primaries", "bt709", "-color_trc", "bt709", "-color_range", "tv"});
    add({"-c:a", "pcm_s16le", "-fflags", "+bitexact", "-flags", "+bitexact", "file:" + job.outputFile});
    return list;
}

std::string lastLines(const std::string& file)
{
    std::istringstream in(wholeFile(file).value_or(""));
    std::deque<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
        if (lines.size() > lastLineCount)
            lines.pop_front();
    }
    std::string text;
    for (const std::string& line : lines)
        text += "\n  " + line;
    return text;
}

} // namespace

Encoder::~Encoder()
{
    if (child > 0)
        kill(child, SIGTERM);
    wait();
}

bool Encoder::start(const Job& job)
{
    messages = job.messageFile;
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return false;
    std::vector<std::string> list = arguments(job);
    std::vector<char*> argv;
    for (std::string& argument : list)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[0], STDIN_FILENO);
    posix_spawn_file_actions_addopen(
        &actions, STDERR_FILENO, job.messageFile.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
    pid_t process = -1;
    const int failure = posix_spawnp(&process, "ffmpeg", &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[0]);
    input = ends[1];
    child = failure == 0 ? process : -1;
    return failure == 0;
}

bool Encoder::write(std::span<const uint8_t> picture)
{
    while (!picture.empty()) {
        const ssize_t n = ::write(input, picture.data(), picture.size());
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        picture = picture.subspan(size_t(n));
    }
    return true;
}

int Encoder::wait()
{
    if (input >= 0)
        close(input);
    input = -1;
    int status = -1;
    while (child > 0 && waitpid(child, &status, 0) < 0 && errno == EINTR) { }
    child = -1;
    return status;
}

std::optional<std::string> Encoder::finish()
{
    const int status = wait();
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return std::nullopt;
    return "ffmpeg failed:" + lastLines(messages);
}

} // namespace samplecard
