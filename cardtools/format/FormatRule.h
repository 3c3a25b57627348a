#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// The result of formatting a card. The numbers are the exit statuses of the format helper.
enum class FormatStatus {
    ok = 0,
    writeProtected = 1,
    wrongUse = 2, // the helper was not called as it should be
    toolMissing = 3,
    toolFailed = 4,
    tookTooLong = 5,
    notAsAsked = 6, // what is on the card afterwards is not what was asked for
    notClean = 7, // the file system check found a fault
    cardGone = 8, // the card could not be opened or read any more
    notADevice = 20,
    systemDisk,
    swapSpace,
    heldByOthers, // encrypted volumes, volume groups, arrays
    notACard,
    otherSize,
    otherMedium,
    stillMounted,
    tooLarge,
    wrongCluster,
    mediumErrors, // the card is there, but reading or writing it fails
    stillWorking, // a tool took too long and cannot be stopped: it may still write
};

/// The facts about a volume that is to be formatted. The defaults stand for what is unknown; the helper's own
/// check finds it out.
struct FormatFacts {
    bool device = false; // a plain name, and a block device of this name
    bool systemDisk = false; // the disk holds something that the system runs from, directly or not
    bool swapSpace = false;
    bool held = false; // the disk is a part of something larger
    bool card = false; // a removable card, or a card in a reader
    bool mounted = false; // or otherwise in use
    bool writable = false;
    uint64_t size = 0; // in bytes
    uint64_t sizeSeen = 0; // what the user saw
    std::string medium; // identity
    std::string mediumSeen;
    long cluster = 0; // sectors per cluster
};

/// May this volume be formatted? The window asks before anything is touched, and the format helper asks
/// again, with facts that it gathered itself. `ok`, or the first reason why not.
FormatStatus mayFormat(const FormatFacts& facts);

/// 32 below 7 GiB, else 128: sectors per cluster, and the number that is shown as KB.
long clusterSizeByVolumeSizeInKB(uint64_t volumeSize);

/// Whether something mounted there belongs to the system; false for an empty path.
bool isSystemPlace(std::string_view mountPath);

/// The key of the text that tells the user; empty for a number that is none of the statuses.
std::string formatStatusKey(int number);
