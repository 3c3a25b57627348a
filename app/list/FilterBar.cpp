#include "app/list/FilterBar.h"

#include "platform/Texts.h"
#include "ui_ListPanel.h"

#include <QDate>
#include <QKeyEvent>
#include <QLocale>

#include <tuple>
#include <utility>

namespace {

QLocale locale()
{
    return platform::textLanguage() == "ko" ? QLocale(QLocale::Korean, QLocale::SouthKorea)
                                            : QLocale(QLocale::English, QLocale::UnitedKingdom);
}

QDate dateOf(std::chrono::local_days day)
{
    const std::chrono::year_month_day date(day);
    return {int(date.year()), int(unsigned(date.month())), int(unsigned(date.day()))};
}

/// The number that belongs to the choice; nothing for "all".
std::optional<int32_t> chosen(const QComboBox& combo)
{
    return combo.currentData().isValid() ? std::optional(combo.currentData().toInt()) : std::nullopt;
}

} // namespace

FilterBar::FilterBar(Ui::ListPanel& widgets, std::function<void()> listener)
    : QObject(widgets.filterBar),
      outlets(widgets),
      changed(std::move(listener))
{
    outlets.filterText->setPlaceholderText(platform::localized("filter.text"));
    outlets.filterText->setAccessibleName(platform::localized("filter.text"));
    outlets.filterText->setToolTip(platform::localized("filter.text_tip"));
    outlets.filterImpact->setText(platform::localized("filter.impact"));
    outlets.filterImpact->setToolTip(platform::localized("filter.impact_tip"));
    for (const auto& [combo, name, all] : {std::tuple(outlets.filterKind, "filter.kind", "filter.all_kinds"),
             std::tuple(outlets.filterCamera, "filter.camera", "filter.all_cameras"),
             std::tuple(outlets.filterDay, "filter.day", "filter.all_days")}) {
        combo->addItem(platform::localized(all));
        combo->setAccessibleName(platform::localized(name));
        combo->setToolTip(platform::localized(name));
    }
    for (const auto& [key, kind] :
        {std::pair("media.always", 0), std::pair("media.motion", 1), std::pair("media.event", 2)})
        outlets.filterKind->addItem(platform::localized(key), kind);
    for (const auto& [key, camera] :
        {std::pair("filter.front", 0), std::pair("filter.rear", 1), std::pair("filter.no_camera", 2)})
        outlets.filterCamera->addItem(platform::localized(key), camera);
    const auto tell = [this] {
        if (!isSettingUp)
            changed();
    };
    connect(outlets.filterText, &QLineEdit::textChanged, this, tell);
    connect(outlets.filterImpact, &QCheckBox::toggled, this, tell);
    for (QComboBox* combo : {outlets.filterKind, outlets.filterCamera, outlets.filterDay})
        connect(combo, &QComboBox::currentIndexChanged, this, tell);
    for (QWidget* control : outlets.filterBar->findChildren<QWidget*>())
        control->installEventFilter(this);
    outlets.filterBar->hide();
    isSettingUp = false;
}

RecordingFilter FilterBar::filter() const
{
    RecordingFilter filter;
    if (!isOpen())
        return filter;
    filter.kind = chosen(*outlets.filterKind);
    filter.camera = chosen(*outlets.filterCamera);
    if (const auto day = chosen(*outlets.filterDay))
        filter.day = std::chrono::local_days(std::chrono::days(*day));
    filter.text = outlets.filterText->text().toStdString();
    filter.withImpact = outlets.filterImpact->isChecked();
    return filter;
}

bool FilterBar::isOpen() const
{
    return !outlets.filterBar->isHidden();
}

void FilterBar::open()
{
    outlets.filterBar->show();
    outlets.filterText->setFocus();
    outlets.filterText->selectAll();
    changed();
}

void FilterBar::close()
{
    isSettingUp = true;
    outlets.filterText->clear();
    outlets.filterImpact->setChecked(false);
    for (QComboBox* combo : {outlets.filterKind, outlets.filterCamera, outlets.filterDay})
        combo->setCurrentIndex(0);
    isSettingUp = false;
    outlets.filterBar->hide();
    changed();
}

void FilterBar::setDays(const std::vector<std::chrono::local_days>& days)
{
    isSettingUp = true;
    const QVariant before = outlets.filterDay->currentData();
    while (outlets.filterDay->count() > 1)
        outlets.filterDay->removeItem(1);
    for (const auto day : days)
        outlets.filterDay->addItem(dateOf(day).toString(Qt::ISODate), int(day.time_since_epoch().count()));
    outlets.filterDay->setCurrentIndex(
        before.isValid() ? std::max(outlets.filterDay->findData(before), 0) : 0);
    isSettingUp = false;
}

void FilterBar::showHidden(int64_t hidden, bool isSearching)
{
    QString text = hidden == 0 ? platform::localized("filter.none_hidden")
        : hidden == 1          ? platform::localized("filter.one_hidden")
                      : platform::localized("filter.hidden").arg(locale().toString(qlonglong(hidden)));
    if (isSearching)
        text += u' ' + platform::localized("filter.searching");
    outlets.filterState->setText(text);
}

bool FilterBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        close();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
