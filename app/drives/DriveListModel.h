#pragma once

#include <QAbstractListModel>

#include <cstddef>

class DriveLibrary;
class DrivePictures;
struct Drive;
struct DriveFigures;

/// The drives, oldest first, one row each. The display role is the whole row as one text, for assistive
/// technology.
class DriveListModel final : public QAbstractListModel {
public:
    enum Role {
        dayRole = Qt::UserRole, ///< "Sat, 18 May 2024"
        timesRole, ///< "18:12 – 18:13"; "18:12 – …" while its end is not known
        figuresRole, ///< "42 s · 0.7 km · 70 km/h · 0.50 g"; shorter where telemetry is missing
        momentsRole, ///< "2 moments"; empty for none
        kindsRole, ///< pictures of the recordings' kinds, a list of names
        pictureRole ///< a QImage of what the camera saw; null while there is none
    };

    DriveListModel(const DriveLibrary& library, const DrivePictures& pictures, QObject* parent);

    /// The library has other drives now.
    void reload();
    void driveChanged(size_t drive);
    void drivesChanged();
    void setShowsMiles(bool miles);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const DriveLibrary& library;
    const DrivePictures& pictures;
    bool showsMiles = false;
};
