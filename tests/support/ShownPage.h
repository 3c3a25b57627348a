#pragma once

#include "lib/SegmentedControl.h"
#include "settings/record/FileData.h"
#include "tests/support/GuiTesting.h"

#include <functional>

/// A page on a desktop, showing a record.
template <typename Page> struct Shown {
    TestPlatform desktop;
    _FILEDATA record;
    Page page{desktop.pieces};

    explicit Shown(const std::function<void(_FILEDATA&)>& change = {})
    {
        initFileDataForRegion(record, false);
        if (change)
            change(record);
        page.setFileData(&record);
    }
    template <typename Control> Control& control(const char* name)
    {
        return *page.template findChild<Control*>(QLatin1String(name));
    }
    int segment(const char* name) { return control<SegmentedControl>(name).selectedSegment(); }
    void choose(const char* name, int segment) { control<SegmentedControl>(name).segment(segment)->click(); }
};
