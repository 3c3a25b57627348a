#include "platform/disks/ToolRun.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <thread>

namespace platform {

namespace {

using Clock = std::chrono::steady_clock;

constexpr size_t longestText = 65536;
// A program that waits for a dead card cannot even be killed.
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

struct Files {
    int null = -1;
    int output = -1; // for what is gathered
    int failure = -1; // receives why the program cannot be started; closed when it starts
};

/// In the new process; only calls that a child of a process with threads may make.
[[noreturn]] void become(const ToolRequest& request, const Files& files, char* const* arguments,
    char* const* environment, pid_t parent)
{
    setsid();
    if (request.endsWithUs && (prctl(PR_SET_PDEATHSIG, SIGKILL) != 0 || getppid() != parent))
        _exit(1);
    for (int signal = 1; signal < NSIG; ++signal)
        ::signal(signal, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    if (dup2(files.null, 0) == 0 && dup2(request.outputToo ? files.output : files.null, 1) == 1
        && dup2(files.output, 2) == 2)
        execvpe(arguments[0], arguments, environment);
    const int error = errno;
    (void)!write(files.failure, &error, sizeof error);
    _exit(1);
}

/// 0 or the error.
int spawn(const ToolRequest& request, int output, pid_t& child)
{
    std::array<int, 2> failure{-1, -1};
    const Descriptor null(::open("/dev/null", O_RDWR | O_CLOEXEC));
    if (null.fd < 0 || pipe2(failure.data(), O_CLOEXEC) != 0)
        return errno;
    const Descriptor told(failure[0]);
    Descriptor tells(failure[1]);
    const auto arguments = pointers(request.command);
    const auto environment = pointers(request.environment);
    const pid_t self = getpid();
    sigset_t all;
    sigset_t before;
    sigfillset(&all);
    // No handler of ours may run in the child.
    pthread_sigmask(SIG_SETMASK, &all, &before);
    child = fork();
    if (child == 0)
        become(request, {null.fd, output, tells.fd}, arguments.data(),
            request.environment.empty() ? environ : environment.data(), self);
    int error = child < 0 ? errno : 0;
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    tells.close();
    ssize_t count = 0;
    while (child > 0 && (count = read(told.fd, &error, sizeof error)) < 0 && errno == EINTR)
        continue;
    if (count <= 0)
        return error;
    waitpid(child, nullptr, 0);
    return error;
}

/// Waits for a process that cannot be stopped, so that no zombie is left.
void leaveToItself(pid_t child)
{
    std::thread([child] { waitpid(child, nullptr, 0); }).detach();
}

int millisecondsUntil(Clock::time_point deadline)
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<long long>(left, 0, 1'000'000'000));
}

/// Reads what is available; false at the end.
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
    if (!ended) {
        result.end = End::stillRuns;
        leaveToItself(child);
    }
    int status = 0;
    if (ended && waitpid(child, &status, 0) == child && result.end == End::exited) {
        result.end = WIFEXITED(status) ? End::exited : End::failed;
        result.status = WIFEXITED(status) ? WEXITSTATUS(status) : WTERMSIG(status);
    }
    result.text = trimmed(std::move(result.text));
    return result;
}

} // namespace platform
