#include "lib/Style.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>

namespace style {

namespace {

constexpr const char* sheet = R"(
* { font-size: 12px; }
QWidget[role="header"] { background: @header; }
QWidget[role="panel"] { background: @inset; border-radius: 6px; }
QWidget[role="graph"] { background: @videoBackdrop; border-radius: 6px; }
QLabel { color: @text; background: transparent; }
QLabel[role="readout"] { font-size: 13px; font-weight: 600; }
QLabel[role="axisX"], QLabel[role="axisY"], QLabel[role="axisZ"] { font-size: 13px; font-weight: 600;
    border-right: 4px solid #FF0000; padding-right: 8px; }
QLabel[role="axisY"] { border-right-color: #00FF00; }
QLabel[role="axisZ"] { border-right-color: #0000FF; }
QLabel[role="speed"] { font-size: 20px; font-weight: 600; }
QLabel[role="caption"] { font-size: 11px; color: @textDim; }
QLabel[role="title"] { font-size: 13px; color: @textDim; }
QLabel[role="time"] { font-size: 12px; color: @textDim; }
QLabel[role="step"] { font-size: 12px; }
QLabel[role="hint"] { font-size: 13px; color: @textDim; }

QTableView { font-size: 11px; background: @inset; alternate-background-color: #413936; color: @text; border: 1px solid @inset;
    border-radius: 6px; selection-background-color: @panel; selection-color: @accent; outline: none; }
QTableView::item { padding: 0 3px; border: none; }
QTableView:focus { border-color: @accent; }
QHeaderView { background: transparent; }
QHeaderView::section { background: @header; color: @textDim; border: none; border-bottom: 1px solid @panel;
    padding: 5px 3px; font-size: 11px; }

QSlider { min-height: 20px; }
QSlider::groove:horizontal { height: 4px; border-radius: 2px; background: @panelRaised; }
QSlider::sub-page:horizontal { height: 4px; border-radius: 2px; background: @accent; }
QSlider::handle:horizontal { width: 14px; height: 14px; margin: -5px 0; border-radius: 7px; background: @text; }
QSlider::handle:horizontal:hover, QSlider::handle:horizontal:focus { background: @accent; }
QSlider::handle:horizontal:disabled, QSlider::sub-page:horizontal:disabled { background: @line; }

QScrollBar:vertical { width: 10px; background: transparent; margin: 0; }
QScrollBar::handle:vertical { background: @line; border-radius: 4px; min-height: 28px; margin: 1px; }
QScrollBar::handle:vertical:hover { background: @textDim; }
QScrollBar::add-line, QScrollBar::sub-line { height: 0; width: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }

QToolTip { background: @header; color: @text; border: 1px solid @line; padding: 3px 5px; }
)";

}

void apply(QApplication& application)
{
    application.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Base, inset);
    palette.setColor(QPalette::AlternateBase, header);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Button, panelRaised);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::BrightText, text);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, accentText);
    palette.setColor(QPalette::ToolTipBase, header);
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, textDim);
    palette.setColor(QPalette::Link, accent);
    application.setPalette(palette);

    QString rules = QString::fromLatin1(sheet);
    const std::pair<const char*, QColor> names[] = {{"@videoBackdrop", videoBackdrop}, {"@header", header},
        {"@panelRaised", panelRaised}, {"@panel", panel}, {"@inset", inset}, {"@line", line},
        {"@textDim", textDim}, {"@accentText", accentText}, {"@accent", accent}, {"@text", text}};
    for (const auto& [name, color] : names)
        rules.replace(QLatin1String(name), color.name());
    application.setStyleSheet(rules);
}

} // namespace style
