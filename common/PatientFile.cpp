#include "common/PatientFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace {

/// Larger than any read of the player.
constexpr size_t largestRead = 256 * 1024;

std::string systemMessage()
{
    return std::system_category().message(errno);
}

struct OpenFile {
    int descriptor = -1;
    int64_t size = -1;
    std::string failure;
};

OpenFile opened(const char* path)
{
    // Opening a pipe would wait for its writer, so the type is checked first.
    struct stat status { };
    if (::stat(path, &status) != 0)
        return {-1, -1, systemMessage()};
    if (S_ISDIR(status.st_mode))
        return {-1, -1, "It is a folder"};
    if (!S_ISREG(status.st_mode))
        return {-1, -1, "It is not a plain file"};
    if (status.st_size == 0)
        return {-1, -1, "The file is empty"};
    const int descriptor = ::open(path, O_RDONLY | O_CLOEXEC | O_NOCTTY);
    return {descriptor, descriptor < 0 ? -1 : int64_t(status.st_size),
        descriptor < 0 ? systemMessage() : std::string()};
}

} // namespace

/// State of both threads; the reading thread may outlive the file's owner.
struct PatientFile::Shared {
    explicit Shared(std::string file)
        : path(std::move(file))
    {
    }

    const std::string path;
    std::mutex mutex;
    std::condition_variable changed;
    bool isOpen = false; // or has failed to open
    bool isGivenUp = false;
    bool isAsked = false;
    bool isAnswered = false;
    uint64_t offset = 0;
    size_t wanted = 0;
    int64_t fileSize = -1;
    int64_t result = -1;
    std::vector<char> bytes;
    std::string failure;
};

PatientFile::PatientFile(std::string path)
    : shared(std::make_shared<Shared>(std::move(path)))
{
    std::thread([common = shared] { serve(common); }).detach();
}

PatientFile::~PatientFile()
{
    giveUp();
}

void PatientFile::serve(const std::shared_ptr<Shared>& shared)
{
    OpenFile file = opened(shared->path.c_str());
    std::unique_lock lock(shared->mutex);
    shared->isOpen = true;
    shared->fileSize = file.size;
    shared->failure = std::move(file.failure);
    shared->changed.notify_all();
    std::vector<char> bytes;
    while (!shared->isGivenUp) {
        shared->changed.wait(lock, [&] { return shared->isAsked || shared->isGivenUp; });
        if (shared->isGivenUp)
            break;
        const auto offset = static_cast<off_t>(shared->offset);
        bytes.resize(shared->wanted);
        lock.unlock();
        ssize_t count = -1;
        do {
            count = ::pread(file.descriptor, bytes.data(), bytes.size(), offset);
        } while (count < 0 && errno == EINTR);
        std::string why = count < 0 ? systemMessage() : std::string();
        lock.lock();
        shared->isAsked = false;
        shared->isAnswered = true;
        shared->result = count;
        std::swap(shared->bytes, bytes);
        if (count < 0)
            shared->failure = std::move(why);
        shared->changed.notify_all();
    }
    lock.unlock();
    if (file.descriptor >= 0)
        ::close(file.descriptor);
}

void PatientFile::waitUntil(std::chrono::steady_clock::time_point moment, std::stop_token stop)
{
    deadline = moment;
    stopped = std::move(stop);
}

void PatientFile::wait(std::unique_lock<std::mutex>& lock, const bool& isDone)
{
    constexpr std::chrono::milliseconds look(50);
    const auto isOver = [&] { return isDone || shared->isGivenUp; };
    if (!deadline) {
        shared->changed.wait(lock, isOver);
        return;
    }
    while (!shared->changed.wait_for(lock, look, isOver)) {
        if (stopped.stop_requested() || std::chrono::steady_clock::now() > *deadline)
            shared->isGivenUp = true;
    }
    shared->changed.notify_all();
}

int64_t PatientFile::size()
{
    std::unique_lock lock(shared->mutex);
    wait(lock, shared->isOpen);
    return shared->isGivenUp ? -1 : shared->fileSize;
}

int64_t PatientFile::read(uint64_t offset, char* into, size_t count)
{
    if (size() < 0)
        return -1;
    std::unique_lock lock(shared->mutex);
    shared->offset = offset;
    shared->wanted = std::min(count, largestRead);
    shared->isAnswered = false;
    shared->isAsked = true;
    shared->changed.notify_all();
    wait(lock, shared->isAnswered);
    if (shared->isGivenUp || shared->result < 0)
        return -1;
    std::copy_n(shared->bytes.data(), shared->result, into);
    return shared->result;
}

void PatientFile::giveUp()
{
    const std::lock_guard lock(shared->mutex);
    shared->isGivenUp = true;
    shared->changed.notify_all();
}

std::string PatientFile::failure() const
{
    const std::lock_guard lock(shared->mutex);
    return shared->failure;
}
