#pragma once

#include "settings/contract/ZVKSettingControllerDelegate.h"
#include "settings/record/FileData.h"

#include <string>
#include <utility>
#include <vector>

/// Shows and edits one field; what the pages do is written down.
struct PageScript {
    std::optional<QString> complaint;
    std::optional<int32_t> input; // in place of what is shown
    int32_t shown = -1;
    std::vector<std::string> calls;
    std::string card; // that the page reads from
};

class ScriptedPage final : public SettingPage {
public:
    ScriptedPage(PageScript& told, std::string pageName)
        : script(told),
          name(std::move(pageName))
    {
        script.calls.push_back("make " + name);
        setFocusPolicy(Qt::StrongFocus);
    }
    void setFileData(_FILEDATA* live) override
    {
        record = live;
        script.shown = record->time_gmt;
        script.input.reset();
    }
    void populate() override { record->time_gmt = script.input.value_or(script.shown); }
    std::optional<QString> validateUserInput() override { return script.complaint; }
    void setMainController(SettingPageHost*) override { }
    bool holds(const std::string& mountPath) const override { return mountPath == script.card; }
    void onHide() override { script.calls.push_back("hide " + name); }

private:
    PageScript& script;
    std::string name;
    _FILEDATA* record = nullptr;
};
