#pragma once

#include "cardtools/CardFormat.h"
#include "cardtools/TKUSBDiskEntity.h"
#include "common/WindowController.h"
#include "platform/Platform.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Ui {
class ZVKFormatWindowController;
}

/// The window that formats a card for the camera. While a card is being formatted neither this window nor the
/// program's other windows close and the program does not quit; the user is told why. A controller that goes
/// away all the same leaves the running format to end by itself, its finishing steps included.
class ZVKFormatWindowController final : public QObject, public WindowController {
public:
    explicit ZVKFormatWindowController(platform::Platform& layer);
    ~ZVKFormatWindowController() override;

    void showWindow() override;
    QWidget& window() override;

    /// A card is being formatted: from the press of the button to the report.
    bool isFormatting() const { return formatting; }

    /// Looks for cards in the background and lists them; `completion` runs after that.
    void loadUSBVolumes(std::function<void()> completion = {});
    /// The card of the selected item; nothing when there is none.
    std::optional<TKUSBDiskEntity> selectedUSBDisk() const;
    /// Selects the first card on this device and returns it; otherwise nothing, and nothing changes.
    std::optional<TKUSBDiskEntity> selectUSBByDevFile(const std::string& deviceFilePath);
    void updateSelectedDiskInfo();
    void changeDisk() { updateSelectedDiskInfo(); }
    void onFormat();
    void doFormat(const TKUSBDiskEntity& card);
    /// Lists the cards that there are now and reports.
    void formatDidFinished(const CardFormat::Outcome& outcome);
    void cancel();

    void showProgressBar(const QString& message);
    /// One tick of a display that is expected to take so many seconds.
    void updateProgressBar(double seconds);
    void hideProgressBar();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void windowDidLoad();
    void centre();
    void connectControls();
    void showDisks(std::vector<TKUSBDiskEntity> disks);
    void selectAgain(const std::optional<TKUSBDiskEntity>& card);
    void setFormatting(bool on);
    void setBarVisible(bool visible);
    void scheduleTick(double seconds);
    void tellThatItIsFormatting();
    void alert(const QString& title, const QString& message, std::function<void()> dismissed = {});
    /// The work, to be run on the main thread as long as this is alive.
    std::function<void()> whileAlive(std::function<void()> work) const;

    platform::Platform& desktop;
    std::unique_ptr<QWidget> loaded;
    std::unique_ptr<Ui::ZVKFormatWindowController> outlets;
    std::vector<TKUSBDiskEntity> usbDiskArray;
    bool stopProgressBar = true;
    double progress = 0;
    int progressDisplay = 0; // counts the displays, so that an old one's tick ends with it
    bool formatting = false;
    bool telling = false;
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};
