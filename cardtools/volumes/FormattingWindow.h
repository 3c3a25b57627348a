#pragma once

#include "lib/WindowController.h"

/// A window in which a card can be formatted. It stays open while formatting, until it has reported the
/// result.
class FormattingWindow : public WindowController {
public:
    virtual bool isFormatting() const = 0;
};
