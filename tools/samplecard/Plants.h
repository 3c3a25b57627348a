#pragma once

#include "tools/samplecard/Canvas.h"
#include "tools/samplecard/Road.h"

#include <array>

namespace samplecard {

/// Trees and bushes painted leaf by leaf, a few of each kind. Immutable after construction.
class Plants {
public:
    Plants();

    struct Plant {
        const Sprite* sprite;
        float widthPerHeight;
    };
    /// A broadleaf, a pine or a bush; any variant number is fine.
    Plant plant(PropKind kind, uint32_t variant) const;

private:
    static constexpr size_t variants = 4;
    std::array<Sprite, variants> broadleaves;
    std::array<Sprite, variants> pines;
    std::array<Sprite, variants> bushes;
};

} // namespace samplecard
