#include "platform/desktop/LinuxPlatform.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    platform::initialiseLayer();
    platform::LinuxPlatform layer;
    QWidget window;
    window.setWindowTitle(QStringLiteral("ZAVIK"));
    window.resize(1020, 640);
    window.show();
    return QApplication::exec();
}
