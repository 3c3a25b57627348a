#pragma once

#include "cardtools/format/CardFormat.h"

#include <QString>

/// What the user is told when a format has ended.
struct FormatReport {
    QString title;
    QString message;
    bool closesWindow = false; // when the user has confirmed it
};

FormatReport formatReport(const CardFormat::Outcome& outcome);

/// The question whether to format a card whose config.bin cannot be kept.
FormatReport configQuestion(const CardFormat::Outcome& outcome);
