#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

/// A new, empty folder that goes away with the test.
class TempFolder {
public:
    TempFolder()
    {
        std::random_device random;
        do {
            root = std::filesystem::temp_directory_path() / ("zavik-test-" + std::to_string(random()));
        } while (!std::filesystem::create_directory(root));
        root = std::filesystem::canonical(root);
    }
    ~TempFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    std::string path() const { return root.native(); }
    std::string path(std::string_view name) const { return (root / name).native(); }

    /// Writes a file, its folders included, and returns its path.
    std::string file(std::string_view name, std::span<const std::byte> bytes = {}) const
    {
        std::filesystem::create_directories((root / name).parent_path());
        std::ofstream out(root / name, std::ios::binary);
        out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush())
            throw std::runtime_error("cannot write " + path(name));
        return path(name);
    }
    std::string file(std::string_view name, std::string_view text) const
    {
        return file(name, std::as_bytes(std::span(text)));
    }
    /// A program that is a shell script.
    std::string program(std::string_view name, const std::string& script) const
    {
        std::filesystem::permissions(file(name, "#!/bin/sh\n" + script), std::filesystem::perms::owner_all);
        return path(name);
    }

private:
    std::filesystem::path root;
};

/// A file's bytes; empty when it cannot be read.
inline std::string contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}
