#include "lib/Style.h"

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QStyleFactory>

namespace style {

namespace {

constexpr const char* sheet = R"(
* { font-size: 12px; }
QWidget[role="header"] { background: @header; }
QWidget[role="panel"] { background: @inset; border-radius: 6px; }
QWidget[role="graph"] { background: @videoBackdrop; border-radius: 6px; }
QLabel { color: @text; background: transparent; qproperty-textFormat: PlainText; }
QLabel[role="readout"] { font-size: 13px; font-weight: 600; }
QLabel[role="axisX"], QLabel[role="axisY"], QLabel[role="axisZ"] { font-size: 13px; font-weight: 600;
    border-right: 4px solid #FF0000; padding-right: 8px; }
QLabel[role="axisY"] { border-right-color: #00FF00; }
QLabel[role="axisZ"] { border-right-color: #0000FF; }
QLabel[role="wait"] { background: rgba(0, 0, 0, 180); border-radius: 6px; padding: 6px 12px; font-size: 13px; }
QLabel[role="speed"] { font-size: 20px; font-weight: 600; }
QLabel[role="caption"] { font-size: 11px; color: @textDim; }
QLabel[role="title"] { font-size: 13px; color: @textDim; }
QLabel[role="time"] { font-size: 12px; color: @textDim; }
QLabel[role="step"] { font-size: 12px; }
QLabel[role="hint"] { font-size: 13px; color: @textDim; }

QTableView { font-size: 11px; background: @inset; alternate-background-color: #413936; color: @text; border: 1px solid @inset;
    border-radius: 6px; selection-background-color: @panel; selection-color: @accent; outline: none; }
QTableView::item { padding: 0 3px; border: none; }
QTableView#mediaListTableView::item { padding: 0; }
QTableView:focus { border-color: @accent; }
QListView#drivesListView { background: @inset; alternate-background-color: #413936; color: @text; border: 1px solid @inset;
    border-radius: 6px; selection-background-color: @panel; selection-color: @accent; outline: none; }
QListView#drivesListView:focus { border-color: @accent; }
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

QScrollBar:horizontal { height: 10px; background: transparent; margin: 0; }
QScrollBar::handle:horizontal { background: @line; border-radius: 4px; min-width: 28px; margin: 1px; }
QScrollBar::handle:horizontal:hover { background: @textDim; }

QToolTip { background: @header; color: @text; border: 1px solid @line; padding: 3px 5px;
    qproperty-textFormat: PlainText; }
)";

/// For secondary windows only. The order matters: of rules with equal weight the later one wins.
constexpr const char* controls = R"(
SegmentedControl, QGroupBox, QGroupBox QLabel, QCheckBox, QRadioButton, QPushButton, QComboBox, QLineEdit,
    QAbstractSpinBox, QTextEdit, QPlainTextEdit, QCalendarWidget, QComboBox QAbstractItemView { font-size: 13px; }
QGroupBox { background: @inset; border: 1px solid @header; border-radius: 8px; padding-top: 26px; }
QGroupBox::title { subcontrol-origin: border; subcontrol-position: top left; left: 12px; top: 10px; color: @text; }
QGroupBox { font-weight: 600; }
QGroupBox QWidget { font-weight: 400; }
QGroupBox QLabel[role="hint"], QLabel[role="warning"] { font-size: 12px; }
QLabel[role="warning"] { color: @danger; }
QLabel:disabled { color: @textDisabled; }
QLabel[role="shareAlways"], QLabel[role="shareMotion"], QLabel[role="shareEvent"] { padding-left: 6px;
    border-left: 12px solid @ok; }
QLabel[role="shareMotion"] { border-left-color: @accent; }
QLabel[role="shareEvent"] { border-left-color: @danger; }
QWidget[role="bar"] { background: @header; }

QScrollArea { background: transparent; border: none; }

QCheckBox, QRadioButton { color: @text; spacing: 8px; padding: 3px 2px; border: 1px solid transparent; border-radius: 5px; }
QCheckBox:disabled, QRadioButton:disabled { color: @textDisabled; }
QCheckBox:focus, QRadioButton:focus { border-color: @accent; }
QCheckBox::indicator, QRadioButton::indicator { width: 14px; height: 14px; background: @window; border: 1px solid @line; }
QCheckBox::indicator { border-radius: 4px; }
QRadioButton::indicator { border-radius: 8px; }
QCheckBox::indicator:hover, QRadioButton::indicator:hover { border-color: @accent; }
QCheckBox::indicator:checked { background: @accent; border-color: @accent; image: url(:/images/control_check_n.svg); }
QRadioButton::indicator:checked { background: @accent; border-color: @accent; image: url(:/images/control_dot_n.svg); }
QCheckBox::indicator:disabled, QRadioButton::indicator:disabled { border-color: @panel; }
QCheckBox::indicator:checked:disabled { background: @line; image: url(:/images/control_check_d.svg); }
QRadioButton::indicator:checked:disabled { background: @line; image: url(:/images/control_dot_d.svg); }

QPushButton { color: @text; background: @panelRaised; border: 1px solid @line; border-radius: 6px; padding: 6px 16px;
    outline: none; }
QDialogButtonBox QPushButton { min-width: 56px; }
QPushButton:hover { background: @panel; }
QPushButton:pressed { background: @header; }
QPushButton:default { background: @accent; color: @accentText; border-color: @accent; }
QPushButton:default:hover { background: #FFE4A3; }
QPushButton:default:pressed { background: #E6BF62; }
QPushButton:focus { border: 2px solid @accent; padding: 5px 15px; }
QPushButton:default:focus { border-color: @text; }
QPushButton:disabled { color: @textDisabled; background: @header; border-color: @panel; }
QPushButton[role="link"] { background: transparent; border-color: transparent; color: @accent; }
QPushButton[role="link"]:focus { border-color: @accent; }

QComboBox, QLineEdit, QAbstractSpinBox { color: @text; background: @window; border: 1px solid @line; border-radius: 5px;
    padding: 4px 8px; min-height: 18px; selection-background-color: @accent; selection-color: @accentText; }
QComboBox:hover, QLineEdit:hover, QAbstractSpinBox:hover { border-color: @textDim; }
QComboBox:focus, QComboBox:on, QLineEdit:focus, QAbstractSpinBox:focus { border: 2px solid @accent; padding: 3px 7px; }
QComboBox:disabled, QLineEdit:disabled, QAbstractSpinBox:disabled { color: @textDisabled; border-color: @panel; background: @inset; }
QLineEdit:read-only { background: @inset; border-color: @panel; }
QComboBox QLineEdit, QAbstractSpinBox QLineEdit { background: transparent; border: none; padding: 0; min-height: 0; }
QComboBox::drop-down { subcontrol-origin: border; subcontrol-position: center right; width: 26px; border: none; }
QComboBox::down-arrow { width: 12px; height: 12px; image: url(:/images/control_down_n.svg); }
QComboBox::down-arrow:disabled { image: url(:/images/control_down_d.svg); }
QWidget#filterBar QComboBox, QWidget#filterBar QLineEdit, QWidget#filterBar QCheckBox { font-size: 12px; }
QWidget#filterBar QComboBox { padding-left: 6px; padding-right: 0; min-width: 40px; }
QWidget#filterBar QComboBox::drop-down { width: 18px; }
QComboBox QAbstractItemView { background: @inset; color: @text; border: 1px solid @line; outline: none;
    selection-background-color: @accent; selection-color: @accentText; }
QListWidget { font-size: 13px; background: @inset; color: @text; border: 1px solid @panel; border-radius: 5px; outline: none;
    selection-background-color: @accent; selection-color: @accentText; }
QListWidget:focus { border-color: @accent; }
QListWidget::item { padding: 4px 8px; border-bottom: 1px solid @header; }
QListWidget::item:selected { background: @accent; color: @accentText; }
QListWidget::item:selected:disabled { background: @panelRaised; color: @text; }
QComboBox QAbstractItemView::item { min-height: 24px; padding: 0 8px; }

QAbstractSpinBox { padding-right: 24px; }
QAbstractSpinBox:focus { padding-right: 23px; }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { subcontrol-origin: border; width: 22px; border: none;
    background: transparent; }
QAbstractSpinBox::up-button { subcontrol-position: top right; margin-top: 2px; }
QAbstractSpinBox::down-button { subcontrol-position: bottom right; margin-bottom: 2px; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover { background: @header; }
QAbstractSpinBox::up-arrow, QAbstractSpinBox::down-arrow { width: 12px; height: 12px; }
QAbstractSpinBox::up-arrow { image: url(:/images/control_up_n.svg); }
QAbstractSpinBox::down-arrow { image: url(:/images/control_down_n.svg); }
QAbstractSpinBox::up-arrow:disabled, QAbstractSpinBox::up-arrow:off { image: url(:/images/control_up_d.svg); }
QAbstractSpinBox::down-arrow:disabled, QAbstractSpinBox::down-arrow:off { image: url(:/images/control_down_d.svg); }

QTextEdit, QPlainTextEdit { color: @text; background: @window; border: 1px solid @line; border-radius: 5px;
    selection-background-color: @accent; selection-color: @accentText; }
QTextEdit:focus, QPlainTextEdit:focus { border-color: @accent; }

QProgressBar { color: @text; background: @window; border: 1px solid @line; border-radius: 5px; min-height: 8px; max-height: 8px;
    text-align: center; }
QProgressBar::chunk { background: @accent; border-radius: 4px; }

QCalendarWidget QWidget#qt_calendar_navigationbar { background: @header; border-radius: 6px; }
QCalendarWidget QToolButton { color: @text; background: transparent; border: 1px solid transparent; border-radius: 5px;
    padding: 4px 8px; margin: 2px; font-size: 13px; font-weight: 600; }
QCalendarWidget QToolButton:hover { background: @panel; }
QCalendarWidget QToolButton:focus { border-color: @accent; }
QCalendarWidget QToolButton#qt_calendar_prevmonth { qproperty-icon: url(:/images/control_left_n.svg); }
QCalendarWidget QToolButton#qt_calendar_nextmonth { qproperty-icon: url(:/images/control_right_n.svg); }
QCalendarWidget QToolButton::menu-indicator { image: none; }
QCalendarWidget QAbstractItemView { background: @inset; color: @text; font-size: 13px; outline: none; border: none;
    alternate-background-color: @inset; selection-background-color: @accent; selection-color: @accentText; }
QCalendarWidget QAbstractItemView:disabled { color: @textDisabled; }
QMenu { background: @header; color: @text; border: 1px solid @line; padding: 4px; font-size: 13px; }
QMenu::item { padding: 5px 20px; border-radius: 4px; }
QMenu::item:selected { background: @accent; color: @accentText; }
QMenu::item:disabled { color: @textDisabled; }
)";

} // namespace

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
    palette.setColor(QPalette::Mid, line);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, textDisabled);
    palette.setColor(QPalette::Disabled, QPalette::Button, header);
    palette.setColor(QPalette::Disabled, QPalette::Mid, panel);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, line);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, videoBackdrop);
    application.setPalette(palette);
    QFont font = QApplication::font();
    font.setFamilies({QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans CJK KR"),
        QStringLiteral("Noto Sans KR"), QStringLiteral("NanumGothic")});
    QApplication::setFont(font);

    QString rules = QLatin1String(sheet) + QLatin1String(controls);
    const std::pair<const char*, QColor> names[] = {{"@videoBackdrop", videoBackdrop}, {"@header", header},
        {"@panelRaised", panelRaised}, {"@panel", panel}, {"@inset", inset}, {"@line", line},
        {"@textDisabled", textDisabled}, {"@textDim", textDim}, {"@accentText", accentText},
        {"@accent", accent}, {"@text", text}, {"@danger", danger}, {"@ok", ok}, {"@window", window}};
    for (const auto& [name, color] : names)
        rules.replace(QLatin1String(name), color.name());
    application.setStyleSheet(rules);
}

} // namespace style
