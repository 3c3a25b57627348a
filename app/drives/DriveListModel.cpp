#include "app/drives/DriveListModel.h"

#include "app/drives/DriveLibrary.h"
#include "app/drives/DrivePictures.h"
#include "platform/Texts.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <array>
#include <chrono>

namespace {

constexpr double kilometresPerMile = 1.609344;

QLocale locale()
{
    return platform::textLanguage() == "ko" ? QLocale(QLocale::Korean, QLocale::SouthKorea)
                                            : QLocale(QLocale::English, QLocale::UnitedKingdom);
}

/// The camera's clock knows no time zone: the same digits in UTC.
QDateTime dateTimeOf(CameraTime time)
{
    const auto milliseconds = std::chrono::floor<std::chrono::milliseconds>(time.time_since_epoch());
    return QDateTime::fromMSecsSinceEpoch(milliseconds.count(), Qt::UTC);
}

QString dayText(const Drive& drive)
{
    return locale().toString(dateTimeOf(drive.start()).date(), platform::localized("drives.day_format"));
}

/// What there is to tell of a drive.
struct Row {
    const Drive& drive;
    const DriveFigures* figures; // null until they are known
    bool isMeasured;
    bool showsMiles;
};

/// For what is not known yet.
const QString unknown = QStringLiteral("…");

QString timesText(const Row& row)
{
    const QDateTime start = dateTimeOf(row.drive.start());
    QString text = start.toString("HH:mm") + QStringLiteral(" – ");
    if (!row.isMeasured)
        return text + unknown;
    const QDateTime end = dateTimeOf(row.drive.end);
    text += end.toString("HH:mm");
    if (const auto days = start.date().daysTo(end.date()); days > 0)
        text += QStringLiteral(" (+%1)").arg(days);
    return text;
}

QString lengthText(const Row& row)
{
    if (!row.isMeasured)
        return unknown;
    const auto seconds = std::chrono::round<std::chrono::seconds>(row.drive.end - row.drive.start()).count();
    if (seconds < 60)
        return platform::localized("drives.seconds").arg(seconds);
    if (seconds < 3600)
        return platform::localized("drives.minutes").arg((seconds + 30) / 60);
    return platform::localized("drives.hours").arg(seconds / 3600).arg(seconds / 60 % 60);
}

QString figuresText(const Row& row)
{
    QStringList parts{lengthText(row)};
    const DriveFigures* figures = row.figures;
    if (!figures)
        return parts.join(QString());
    const bool showsMiles = row.showsMiles;
    const double unit = showsMiles ? kilometresPerMile : 1;
    if (figures->distanceKm)
        parts += locale().toString(*figures->distanceKm / unit, 'f', 1) + (showsMiles ? " mi" : " km");
    if (figures->topSpeedKmh)
        parts += locale().toString(*figures->topSpeedKmh / unit, 'f', 0) + (showsMiles ? " Mi/h" : " Km/h");
    if (figures->strongestG)
        parts += locale().toString(*figures->strongestG, 'f', 2) + " g";
    return parts.join(QStringLiteral(" · "));
}

struct Kind {
    int32_t division;
    const char* image;
    const char* text;
};
constexpr std::array<Kind, 3> kinds = {
    {{0, "car_alwa", "media.always"}, {1, "car_motion", "media.motion"}, {2, "car_event", "media.event"}}};

/// What the kinds of the drive's recordings are called by that member.
QStringList kindsOf(const Drive& drive, const char* Kind::*member)
{
    QStringList names;
    for (const Kind& kind : kinds) {
        if (std::ranges::any_of(
                drive.takes, [&](const Take& take) { return take.first.mediaDivision() == kind.division; }))
            names += QLatin1String(kind.*member);
    }
    return names;
}

QString momentsText(const DriveFigures* figures)
{
    if (!figures || figures->moments.empty())
        return {};
    const size_t count = figures->moments.size();
    return count == 1 ? platform::localized("drives.moment_one")
                      : platform::localized("drives.moments").arg(count);
}

QString wholeText(const Row& row)
{
    QStringList names;
    for (const QString& key : kindsOf(row.drive, &Kind::text))
        names += platform::localized(key.toStdString());
    QString text =
        dayText(row.drive) + ", " + timesText(row) + ", " + figuresText(row) + ", " + names.join(", ");
    if (const QString moments = momentsText(row.figures); !moments.isEmpty())
        text += ", " + moments;
    return text;
}

} // namespace

DriveListModel::DriveListModel(const DriveLibrary& shown, const DrivePictures& pictured, QObject* parent)
    : QAbstractListModel(parent),
      library(shown),
      pictures(pictured)
{
}

void DriveListModel::reload()
{
    beginResetModel();
    endResetModel();
}

void DriveListModel::driveChanged(size_t drive)
{
    const QModelIndex row = index(int(drive));
    emit dataChanged(row, row);
}

void DriveListModel::setShowsMiles(bool miles)
{
    showsMiles = miles;
    drivesChanged();
}

void DriveListModel::drivesChanged()
{
    if (rowCount() > 0)
        emit dataChanged(index(0), index(rowCount() - 1));
}

int DriveListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(library.drives().size());
}

QVariant DriveListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const auto at = size_t(index.row());
    const Row row{library.drives()[at], library.figures(at), library.isMeasured(at), showsMiles};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
        return wholeText(row);
    case dayRole:
        return dayText(row.drive);
    case timesRole:
        return timesText(row);
    case figuresRole:
        return figuresText(row);
    case momentsRole:
        return momentsText(row.figures);
    case kindsRole:
        return kindsOf(row.drive, &Kind::image);
    case pictureRole:
        return pictures.picture(at);
    default:
        return {};
    }
}
