#pragma once

#include "platform/disks/KernelDevice.h"
#include "platform/disks/ToolRun.h"
#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <string>

/// A sparse file as a block device, for as long as this lives. Needs root.
class LoopDevice {
public:
    explicit LoopDevice(uint64_t size, const std::string& option = "--nooverlap")
    {
        const std::string image = folder.file("card.img");
        std::filesystem::resize_file(image, size);
        const auto made = platform::runTool(
            {{"losetup", "--find", "--show", option, image}, std::chrono::seconds(30), true});
        if (made.succeeded())
            name = std::filesystem::path(made.text).filename();
        // The kernel keeps this from one file to the next.
        if (option != "--read-only")
            (void)platform::runTool({{"blockdev", "--setrw", path()}, std::chrono::seconds(30)});
    }
    ~LoopDevice()
    {
        if (!name.empty())
            (void)platform::runTool({{"losetup", "--detach", path()}, std::chrono::seconds(30)});
    }
    LoopDevice(const LoopDevice&) = delete;
    LoopDevice& operator=(const LoopDevice&) = delete;

    std::string path() const { return "/dev/" + name; }
    std::string image() const { return folder.path("card.img"); }
    std::string sequence() const { return platform::kernelDevice(name).sequence; }

    std::string name; // empty when there is none

private:
    TempFolder folder;
};

/// A test that formats for real.
class LoopDeviceTest : public testing::Test {
protected:
    void SetUp() override
    {
        if (geteuid() != 0 || !std::filesystem::exists("/dev/loop-control"))
            GTEST_SKIP() << "loop devices need root: formatting for real was not tested";
    }
};
