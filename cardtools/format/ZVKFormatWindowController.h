#pragma once

#include "cardtools/format/CardFormat.h"
#include "cardtools/format/FormatCardText.h"
#include "cardtools/format/FormatWriting.h"
#include "cardtools/volumes/FormattingWindow.h"
#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "platform/Platform.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace Ui {
class ZVKFormatWindowController;
}

class CardHolder;

/// The window that formats a card for the camera. While a card is being formatted neither this window nor the
/// program's other windows close and the program does not quit; the user is told why. Until the card itself
/// is touched, Cancel gives it up. A controller that goes away then leaves nothing behind; one that goes away
/// later leaves the running format to end by itself, its finishing steps included.
class ZVKFormatWindowController final : public QObject, public FormattingWindow {
public:
    /// `holder` is asked to let go of a card before it is unmounted; it lives longer than this. Null for
    /// nobody.
    explicit ZVKFormatWindowController(platform::Platform& layer, CardHolder* holder = nullptr);
    ~ZVKFormatWindowController() override;

    void showWindow() override;
    QWidget& window() override;

    /// A card is being formatted: from the press of the button to the report.
    bool isFormatting() const override { return job != nullptr; }

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
    /// Closes the window; while a card is being formatted, gives that up as long as it can be.
    void cancel();

    void showProgressBar(const QString& message);
    /// One tick of a display that is expected to take so many seconds; while a card is being formatted, the
    /// bar goes on by what has been written.
    void updateProgressBar(double seconds);
    void hideProgressBar();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void windowDidLoad();
    void setTexts();
    void centre();
    void connectControls();
    void showDisks(std::vector<TKUSBDiskEntity> disks);
    void lookAtCards();
    void showRow(int row, const std::optional<CardContents>& contents);
    void selectAgain(const std::optional<TKUSBDiskEntity>& card);
    void refresh();

    // The way of a format: each step goes on to the next on the main thread.
    void prepared(const CardFormat::Outcome& outcome);
    void askAboutConfig(const CardFormat::Outcome& outcome);
    void letGo();
    void awaitLettingGo(int tries);
    void runJob(CardFormat::Outcome (CardFormat::*part)());
    void setFormatting(std::shared_ptr<CardFormat> formatting);

    void showPhase(CardFormat::Phase phase);
    void showStep(const QString& message, double done);
    void followWriting();
    void setBarVisible(bool visible);
    void scheduleTick(double seconds);
    void tellThatItIsFormatting();
    void alert(const QString& title, const QString& message, std::function<void()> dismissed = {});
    /// The work, to be run on the main thread as long as this is alive.
    std::function<void()> whileAlive(std::function<void()> work) const;

    platform::Platform& desktop;
    CardHolder* const cardHolder;
    std::unique_ptr<QWidget> loaded;
    std::unique_ptr<Ui::ZVKFormatWindowController> outlets;
    std::vector<TKUSBDiskEntity> usbDiskArray;
    std::unique_ptr<platform::MountWatch> mountWatch;
    std::stop_source lookingAtCards;
    bool stopProgressBar = true;
    double progress = 0;
    int progressDisplay = 0; // counts the displays, so that an old one's tick ends with it
    std::shared_ptr<CardFormat> job; // of the card that is being formatted
    std::shared_ptr<FormatWriting> writing; // while the card is being written
    std::string letGoPath; // of the card that the holder let go of
    std::function<void()> takeWaitingAlertAway; // while it is open
    std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};
