#include "cardtools/format/FormatCardText.h"

#include "common/ByteCount.h"
#include "common/Text.h"
#include "media/ZVKMediaList.h"
#include "platform/Texts.h"

#include <QLocale>
#include <QStringList>

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

namespace {

using platform::localized;

QString shown(const std::string& text)
{
    return QString::fromStdString(visibleText(text));
}

QString fileSystemText(const std::string& name)
{
    constexpr std::pair<const char*, const char*> names[] = {
        {"vfat", "FAT"}, {"exfat", "exFAT"}, {"ntfs", "NTFS"}, {"crypto_LUKS", "LUKS"}};
    for (const auto& [system, user] : names) {
        if (name == system)
            return QString::fromLatin1(user);
    }
    return name.empty() ? localized("format.no_file_system") : shown(name);
}

QString recordingsText(const CardContents& contents)
{
    if (!contents.isReadable)
        return localized("format.cannot_be_read");
    const QLocale numbers(platform::textLanguage() == "ko" ? QLocale::Korean : QLocale::English);
    const QString count = numbers.toString(qlonglong(contents.recordings)) + (contents.areMore ? "+" : "");
    return localized(contents.recordings == 1 ? "format.one_recording" : "format.recordings").arg(count);
}

} // namespace

CardContents contentsOfCard(const std::string& mountPath, std::stop_token stop)
{
    CardContents contents;
    std::vector<ZVKMedia> recordings;
    const MediaScanState state = ZVKMediaList::eachDir(mountPath, recordings, std::move(stop));
    contents.recordings = std::ssize(recordings);
    contents.areMore = state.isCut || state.unreadCount > 0;
    contents.isReadable = state.isReadable;
    std::error_code error;
    const auto space = std::filesystem::space(mountPath, error);
    if (!error)
        contents.freeBytes = space.available;
    return contents;
}

QString formatCardText(const TKUSBDiskEntity& card, const std::optional<CardContents>& contents)
{
    TKUSBDiskEntity named = card;
    if (named.volumeName.empty())
        named.volumeName = localized("format.no_name").toStdString();
    QStringList details{shown(card.deviceFilePath)};
    if (card.mountedURL.empty() || !card.fileSystem.empty())
        details += fileSystemText(card.fileSystem);
    if (card.mountedURL.empty())
        details += localized("format.not_mounted");
    else if (contents)
        details += recordingsText(*contents);
    if (contents && contents->freeBytes)
        details +=
            localized("format.free").arg(QString::fromStdString(formatByteCount(*contents->freeBytes)));
    if (!card.serial.empty())
        details += localized("format.serial").arg(shown(card.serial));
    return shown(named.displayString()) + "\n" + details.join(QStringLiteral(" \u00B7 "));
}

QString formatButtonText(const std::optional<TKUSBDiskEntity>& card)
{
    if (!card)
        return localized("setting.format.format");
    constexpr qsizetype longest = 16;
    QString name = shown(card->volumeName);
    if (name.size() > longest)
        name = name.left(longest - 1) + QChar(0x2026);
    if (name.isEmpty())
        name = shown(card->deviceFilePath);
    return localized("format.button")
        .arg(name.replace('&', "&&"), QString::fromStdString(formatByteCount(card->volumeSize)));
}
