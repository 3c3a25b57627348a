#pragma once

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

#include <string>

/// A file on a card that hangs: whoever opens it waits until this is gone (a lease that is not given up).
class HungFile {
public:
    explicit HungFile(const std::string& path)
        : descriptor(::open(path.c_str(), O_RDWR | O_CLOEXEC))
    {
        std::signal(SIGIO, SIG_IGN);
        isHung = ::fcntl(descriptor, F_SETLEASE, F_WRLCK) == 0;
    }
    ~HungFile() { ::close(descriptor); }
    HungFile(const HungFile&) = delete;
    HungFile& operator=(const HungFile&) = delete;

    /// False where the file system has no leases.
    bool isHung = false;

private:
    int descriptor;
};
