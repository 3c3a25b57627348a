#include "tools/samplecard/CardStamp.h"

#include "common/FilePlace.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace samplecard {

namespace {

constexpr auto fileName = ".samplecard";

std::map<std::string, uintmax_t> filesIn(const fs::path& folder)
{
    std::map<std::string, uintmax_t> files;
    std::error_code failure;
    for (auto it = fs::recursive_directory_iterator(folder, failure);
         it != fs::recursive_directory_iterator(); it.increment(failure)) {
        if (failure)
            break;
        const std::string name = it->path().lexically_relative(folder).generic_string();
        if (!it->is_directory(failure) && name != fileName)
            files[name] = it->file_size(failure);
    }
    return files;
}

} // namespace

std::optional<CardStamp> CardStamp::read(const fs::path& folder)
{
    std::istringstream in(wholeFile((folder / fileName).native()).value_or(""));
    CardStamp stamp;
    if (!std::getline(in, stamp.recipe) || !stamp.recipe.starts_with("samplecard "))
        return std::nullopt;
    for (std::string line; std::getline(in, line);) {
        std::istringstream words(line);
        uintmax_t size = 0;
        std::string name;
        if (words >> size && std::getline(words >> std::ws, name))
            stamp.files[name] = size;
    }
    return stamp;
}

bool CardStamp::write(const fs::path& folder, const std::string& recipe)
{
    std::ofstream out(folder / fileName);
    out << recipe << '\n';
    for (const auto& [name, size] : filesIn(folder))
        out << size << ' ' << name << '\n';
    return bool(out.flush());
}

bool CardStamp::isIntact(const fs::path& folder) const
{
    const auto present = filesIn(folder);
    return std::all_of(files.begin(), files.end(), [&](const auto& file) {
        const auto found = present.find(file.first);
        return found != present.end() && found->second == file.second;
    });
}

std::vector<std::string> CardStamp::strangers(const fs::path& folder) const
{
    std::vector<std::string> names;
    for (const auto& file : filesIn(folder)) {
        if (!files.contains(file.first))
            names.push_back(file.first);
    }
    return names;
}

} // namespace samplecard
