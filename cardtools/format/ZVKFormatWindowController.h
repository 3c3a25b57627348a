#pragma once

#include "cardtools/format/CardFormat.h"
#include "cardtools/format/FormatCardText.h"
#include "cardtools/format/FormatWriting.h"
#include "cardtools/volumes/FormattingWindow.h"
#include "cardtools/volumes/TKUSBDiskEntity.h"
#include "common/Life.h"
#include "lib/LoadingBar.h"
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
    /// `holder` closes its files on a card before it is unmounted; must outlive this. May be null.
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
    void hideProgressBar();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Disks = std::vector<TKUSBDiskEntity>;

    void windowDidLoad();
    void setTexts();
    void centre();
    void connectControls();
    void showDisks(Disks disks);
    void lookAtCards();
    void showRow(int row, const std::optional<CardContents>& contents);
    void selectAgain(const std::optional<TKUSBDiskEntity>& card);
    void refresh();

    // The steps of a format: each calls the next on the main thread.
    void prepared(const CardFormat::Outcome& outcome);
    void askAboutConfig(const CardFormat::Outcome& outcome);
    void letGo();
    void awaitLettingGo(int tries);
    void runJob(CardFormat::Outcome (CardFormat::*part)());
    void setFormatting(std::shared_ptr<CardFormat> formatting);

    void showPhase(CardFormat::Phase phase);
    void showStep(const QString& message, double done);
    void makeBar();
    std::optional<double> measured();
    void followWriting();
    void setBarVisible(bool visible);
    void tellThatItIsFormatting();
    void alert(const QString& title, const QString& message, std::function<void()> dismissed = {});

    platform::Platform& desktop;
    CardHolder* const cardHolder;
    std::unique_ptr<QWidget> loaded;
    std::unique_ptr<Ui::ZVKFormatWindowController> outlets;
    Disks usbDiskArray;
    std::unique_ptr<platform::MountWatch> mountWatch;
    std::stop_source lookingAtCards;
    std::unique_ptr<LoadingBar> bar; // while a card is being formatted it goes on by what has been written
    double progress = 0; // of the format, 0 to 100
    std::shared_ptr<CardFormat> job; // of the card that is being formatted
    std::shared_ptr<FormatWriting> writing; // while the card is being written
    std::string letGoPath; // of the card that the holder let go of
    std::function<void()> takeWaitingAlertAway; // while it is open
    Life life;
};
