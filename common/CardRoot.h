#pragma once

#include "common/FilePlace.h"

#include <memory>
#include <string>
#include <string_view>

/// The root folder of a card, opened once. What is below it is not trusted: no link is followed on the way
/// to a file, and no path leads out of the root. Blocks as long as the card; callable from any thread. As
/// long as it or one of its places lives, the card is in use.
class CardRoot {
public:
    /// How paths below the root are resolved: by the kernel's own rule, or step by step where it has none.
    enum class Walk { byKernel, stepByStep };

    /// Links in the path to the folder are followed: it comes from the user or the system.
    explicit CardRoot(const std::string& folder, Walk walk = Walk::byKernel);

    /// Whether the root could be opened.
    FileError error() const { return failure; }
    /// The file of that relative path ("DrvInfo/zavik_000.drv"); its error tells when its folder is not there
    /// or is reached by a link.
    FilePlace file(std::string_view relative) const;
    /// Makes a folder in the root, or finds it there. A link or a file of that name is an error.
    [[nodiscard]] FileError makeFolder(const std::string& name) const;
    /// Waits until all that was written to the card is on its medium.
    [[nodiscard]] FileError sync() const;

private:
    std::string path;
    std::shared_ptr<const Descriptor> root;
    Walk way;
    FileError failure;
};
