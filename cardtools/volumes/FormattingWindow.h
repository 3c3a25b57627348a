#pragma once

#include "lib/WindowController.h"

/// A window in which a card can be formatted. One that is formatting stays until it has told the end.
class FormattingWindow : public WindowController {
public:
    virtual bool isFormatting() const = 0;
};
