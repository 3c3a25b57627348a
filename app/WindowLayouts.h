#pragma once

#include "app/ZVKAppDelegate.h"
#include "platform/VisualFormat.h"

#include <initializer_list>

/// The layouts of the main window's containers, by the containers' names.
struct ZVKAppDelegate::Layouts {
    Layouts(CustomWindow& window, const Ui::ZVKAppDelegate& outlets);

    /// Replaces a container's formats and applies them.
    void set(platform::FormatLayout& layout, std::initializer_list<const char*> formats);

    QHash<QString, QWidget*> views;
    platform::FormatLayout content;
    platform::FormatLayout background;
    platform::FormatLayout body;
    platform::FormatLayout bodyLeft;
    platform::FormatLayout bodyRight;
    platform::FormatLayout mediaListBox;
    platform::FormatLayout mapContainer;
    platform::FormatLayout mapContainerTop;
    platform::FormatLayout videoBox;
    platform::FormatLayout videoContainer;
};
