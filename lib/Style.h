#pragma once

#include <QColor>

class QApplication;

/// The program's one palette. Contrast is at least 4.5 : 1 for texts on the grounds that they stand on.
namespace style {

inline const QColor window(0x2F, 0x29, 0x26); // secondary windows, the outermost ground
inline const QColor header(0x45, 0x3D, 0x39);
inline const QColor panel(0x6A, 0x5F, 0x5B); // boxes of the main window
inline const QColor panelRaised(0x74, 0x68, 0x64); // buttons, the row under the pointer
inline const QColor inset(0x3A, 0x33, 0x30); // wells: list, graph, text fields
inline const QColor line(0x8C, 0x80, 0x7B);
inline const QColor text(0xFB, 0xF8, 0xF6);
inline const QColor textDim(0xE6, 0xE0, 0xDC);
inline const QColor accent(0xFF, 0xD9, 0x7D); // the current, selected or pressed thing; focus
inline const QColor accentText(0x2B, 0x23, 0x20);
inline const QColor videoBackdrop(0x16, 0x12, 0x11);

inline const QColor textDisabled(0xAA, 0x9E, 0x99); // 4.5 : 1 on inset as well
inline const QColor danger(0xFF, 0xB8, 0xA8); // failures, event recordings
inline const QColor ok(0xB0, 0xEE, 0xC4); // success, always recordings

/// From line to line in a box of a secondary window, in points.
inline constexpr int lineSpacing = 8;

/// Gives the application its palette, fonts and style sheet, so that it looks the same whatever else is
/// installed. Every label, those of tool tips and message boxes among them, shows plain text, whatever it
/// looks like: names of files, cards and devices come from outside. Widgets choose a look by their dynamic
/// property "role": header, panel, graph, readout, axisX to axisZ, speed, caption, step; in secondary windows
/// also hint (guide texts, word-wrapped), warning (a label that tells of something wrong), bar (the row of
/// buttons at the bottom), link (a button without a frame), shareAlways, shareMotion and shareEvent (labels
/// with the colour of a kind of recording).
void apply(QApplication& application);

} // namespace style
