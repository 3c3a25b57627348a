#pragma once

#include <QIcon>
#include <QImage>

/// The application's icon, as the desktop shows it in its dock or task bar and in the windows' title bars.
QIcon applicationIcon();
void setApplicationIcon(const QIcon& icon);

/// An icon's side in points, for drawing on it.
inline constexpr int dockIconSide = 128;

/// The icon's picture, `dockIconSide` points wide and high with two pixels to a point; transparent when it is
/// empty.
QImage dockIconImage(const QIcon& icon);
