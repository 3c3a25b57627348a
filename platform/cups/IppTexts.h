#pragma once

#include <cups/ipp.h>

#include <string>
#include <vector>

namespace platform::cups {

/// The attribute's values that are texts; a printer may answer with anything. Empty when there is none.
std::vector<std::string> texts(ipp_attribute_t* attribute);

} // namespace platform::cups
