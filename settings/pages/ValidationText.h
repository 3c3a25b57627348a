#pragma once

#include "settings/record/ZVKValidator.h"

#include <QString>

/// The message in the interface language; nothing for no message.
std::optional<QString> localizedMessage(const std::optional<ValidationMessage>& message);
