#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

/// A file descriptor; closed when this is destroyed.
class Descriptor {
public:
    explicit Descriptor(int opened = -1)
        : number(opened)
    {
    }
    Descriptor(Descriptor&& other) noexcept
        : number(other.release())
    {
    }
    Descriptor& operator=(Descriptor&& other) noexcept;
    ~Descriptor();

    explicit operator bool() const { return number >= 0; }
    int get() const { return number; }
    int release();

private:
    int number;
};

/// Why something could not be done with a file: the system's errno, or one of our own reasons.
struct FileError {
    static constexpr int link = -1; // a symbolic link, which is not followed there
    static constexpr int noPlainFile = -2; // a folder, a pipe, a device
    static constexpr int tooLarge = -3;
    static constexpr int notReadBack = -4; // what is read back differs from what was written
    static constexpr int otherLength = -5; // no file can be made beside it, and in place its length must stay
    static constexpr int locked = -6; // another program goes on saving there
    static constexpr int tooShort = -7;

    int code = 0;

    explicit operator bool() const { return code != 0; }
    /// A readable message; empty without an error.
    std::string text() const;
};

/// Where a file is or is to be: its folder, held open, and its name in there. All that is done with the file
/// goes through that folder and stops at a link in the file's place, so that nothing that is renamed or
/// linked meanwhile leads elsewhere. As long as it lives, its volume is in use.
class FilePlace {
public:
    /// A file that the user named. Links to the file are followed, once and now: it is the file they lead to.
    static FilePlace chosen(const std::string& path);

    /// Whether the folder could be opened.
    FileError error() const { return failure; }
    /// For messages.
    const std::string& path() const { return shown; }
    const std::string& name() const { return fileName; }
    /// Of the folder; -1 with an error.
    int folder() const { return handle ? handle->get() : -1; }
    /// Another file in the same folder.
    FilePlace sibling(const std::string& otherName) const;

    /// Whether anything has that name, a link too.
    bool isThere() const;
    /// The size of the regular file in bytes; nothing when there is none.
    std::optional<uint64_t> size() const;
    /// Opens the regular file for reading, without waiting for anything but the medium.
    Descriptor open(FileError& why) const;
    /// The first bytes of the regular file, `most` when it has so many; nothing when they cannot be read.
    std::optional<std::string> beginning(size_t most, FileError& why) const;
    /// All bytes of the regular file; nothing when they cannot all be read or are more than `most`.
    std::optional<std::string> contents(size_t most, FileError& why) const;

private:
    friend class CardRoot;
    FilePlace() = default;
    FilePlace(Descriptor folder, int error, std::string name, std::string path);

    std::shared_ptr<const Descriptor> handle;
    FileError failure;
    std::string fileName;
    std::string shown;
};

/// All bytes of a regular file that the user or the system names; nothing, and why, when they cannot all be
/// read. For a file on a card, its size bounded: `FilePlace::contents`.
std::optional<std::string> wholeFile(const std::string& path, FileError& why);
/// The same where a file that cannot be read is like one that is not there.
std::optional<std::string> wholeFile(const std::string& path);

/// Keeps other programs of ours from saving in the place's folder; ends with this object. Around reading,
/// changing and writing a file.
class SaveLock {
public:
    /// Waits for others that long. Without effect on file systems without locks.
    explicit SaveLock(const FilePlace& place, std::chrono::milliseconds patience = std::chrono::seconds(10));

    FileError error() const { return failure; }

private:
    Descriptor folder;
    FileError failure;
};
