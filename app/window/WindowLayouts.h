#pragma once

#include "app/ZVKAppDelegate.h"
#include "lib/VisualFormat.h"

#include <initializer_list>

/// The layouts of the main window's containers, by the containers' names.
struct ZVKAppDelegate::Layouts {
    Layouts(CustomWindow& window, const MainWindowOutlets& outlets);

    /// Replaces a container's formats and applies them.
    void set(FormatLayout& layout, std::initializer_list<const char*> formats);

    QHash<QString, QWidget*> views;
    FormatLayout content;
    FormatLayout background;
    FormatLayout body;
    FormatLayout bodyLeft;
    FormatLayout bodyRight;
    FormatLayout mediaListBox;
    FormatLayout mapContainer;
    FormatLayout mapContainerTop;
    FormatLayout videoBox;
    FormatLayout videoContainer;
};
