#include "platform/ToolRun.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t longestText = 65536;
// A program that waits for a dead card does not even take a kill.
constexpr std::chrono::milliseconds patienceAfterKill{2000};

class Descriptor {
public:
    explicit Descriptor(int number = -1)
        : fd(number)
    {
    }
    ~Descriptor() { close(); }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    void close()
    {
        if (fd >= 0)
            ::close(fd);
        fd = -1;
    }
    int fd;
};

std::vector<char*> pointers(const std::vector<std::string>& texts)
{
    std::vector<char*> made;
    made.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        made.push_back(const_cast<char*>(text.c_str()));
    made.push_back(nullptr);
    return made;
}

/// 0 or the error.
int spawn(const ToolRequest& request, int writeEnd, pid_t& child)
{
    posix_spawn_file_actions_t actions;
    posix_spawnattr_t attributes;
    posix_spawn_file_actions_init(&actions);
    posix_spawnattr_init(&attributes);
    posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, writeEnd, 2);
    if (request.outputToo)
        posix_spawn_file_actions_adddup2(&actions, writeEnd, 1);
    else
        posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    sigset_t none;
    sigset_t all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&attributes, &none);
    posix_spawnattr_setsigdefault(&attributes, &all);
    posix_spawnattr_setflags(
        &attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    auto arguments = pointers(request.command);
    auto environment = pointers(request.environment);
    const int error = posix_spawnp(&child, arguments.front(), &actions, &attributes, arguments.data(),
        request.environment.empty() ? environ : environment.data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    return error;
}

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, 1'000'000'000));
}

/// Takes what is there; false at the end.
bool takeText(int fd, std::string& text)
{
    std::array<char, 4096> piece;
    const ssize_t count = read(fd, piece.data(), piece.size());
    if (count > 0)
        text.append(piece.data(), std::min(static_cast<size_t>(count), longestText - text.size()));
    return count > 0 || (count < 0 && (errno == EAGAIN || errno == EINTR));
}

/// Reads until the process has ended; false when the deadline comes first.
bool waitForEnd(int process, Descriptor& pipe, std::string& text, Clock::time_point deadline)
{
    for (;;) {
        std::array<pollfd, 2> watched{{{process, POLLIN, 0}, {pipe.fd, POLLIN, 0}}};
        const int ready = poll(watched.data(), watched.size(), millisecondsUntil(deadline));
        if (ready < 0 && errno != EINTR)
            return false;
        if (ready > 0 && watched[1].revents != 0 && !takeText(pipe.fd, text))
            pipe.close();
        else if (ready > 0 && watched[0].revents != 0)
            return true;
        if (Clock::now() >= deadline)
            return false;
    }
}

std::string trimmed(std::string text)
{
    const auto last = text.find_last_not_of(" \t\r\n");
    text.erase(last == std::string::npos ? 0 : last + 1);
    text.erase(0, text.find_first_not_of(" \t\r\n"));
    return text;
}

} // namespace

ToolResult runTool(const ToolRequest& request)
{
    using End = ToolResult::End;
    ToolResult result;
    std::array<int, 2> ends{-1, -1};
    if (request.command.empty() || pipe2(ends.data(), O_CLOEXEC) != 0) {
        result.text = std::strerror(errno);
        return result;
    }
    Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    pid_t child = -1;
    if (const int error = spawn(request, writeEnd.fd, child); error != 0) {
        result.end = error == ENOENT ? End::missing : End::failed;
        result.text = std::strerror(error);
        return result;
    }
    writeEnd.close();

    const Descriptor process(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    bool ended = waitForEnd(process.fd, readEnd, result.text, Clock::now() + request.limit);
    result.end = ended ? End::exited : End::tookTooLong;
    if (!ended && kill(-child, SIGKILL) == 0)
        ended = waitForEnd(process.fd, readEnd, result.text, Clock::now() + patienceAfterKill);
    int status = 0;
    if (ended && waitpid(child, &status, 0) == child && result.end == End::exited) {
        result.end = WIFEXITED(status) ? End::exited : End::failed;
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
    }
    result.text = trimmed(std::move(result.text));
    return result;
}

} // namespace platform
