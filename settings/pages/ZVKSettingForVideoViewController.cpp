#include "settings/pages/ZVKSettingForVideoViewController.h"

#include "lib/InterfaceHelpers.h"
#include "platform/Texts.h"
#include "settings/pages/PageControls.h"
#include "settings/record/FileData.h"
#include "ui_ZVKSettingForVideoViewController.h"

#include <QGridLayout>

using platform::localized;

namespace {

/// Mbit/s of the six cells by resolution code; the record holds kbit/s.
constexpr std::array<std::array<uint32_t, 6>, 2> bitrates{{{6, 7, 8, 9, 10, 11}, {3, 4, 5, 6, 7, 8}}};

constexpr std::array<uint32_t, 2> framerates{24 << 8, 30 << 8};
/// The camera's frame rate codes; other rates have code 0. Code 7 is the first segment.
constexpr std::array<uint32_t, 9> codedFramerates{0, 3, 5, 7, 10, 12, 15, 24, 30};

constexpr uint32_t darkest = 124;
constexpr int brightnessStep = 4;

int segmentOfFramerate(uint32_t vid_framerate)
{
    const auto code = static_cast<int>(positionIn(codedFramerates, vid_framerate >> 8).value_or(0));
    return code >= 7 ? code - 7 : code;
}

/// -1 when the value is between two steps.
qint64 segmentOfBrightness(uint32_t vid_brightness)
{
    const qint64 above = qint64(vid_brightness) - darkest;
    return above % brightnessStep == 0 ? above / brightnessStep : -1;
}

/// -1 when the resolution has no such rate.
qint64 cellOfBitrate(uint32_t vid_enc_res, uint32_t vid_enc_bitrate)
{
    if (vid_enc_res >= bitrates.size() || vid_enc_bitrate % 1000 != 0)
        return -1;
    const auto cell = positionIn(bitrates[vid_enc_res], vid_enc_bitrate / 1000);
    return cell ? qint64(*cell) : -1;
}

} // namespace

ZVKSettingForVideoViewController::ZVKSettingForVideoViewController(platform::Platform&, QWidget* parent)
    : RecordPage(parent),
      outlets(std::make_unique<Ui::ZVKSettingForVideoViewController>())
{
    outlets->setupUi(this);
    awakeFromNib();
    bindControls();
    connect(outlets->videoResolution, &SegmentedControl::segmentClicked, this,
        &ZVKSettingForVideoViewController::clickvideoResolutionSegment);
}

ZVKSettingForVideoViewController::~ZVKSettingForVideoViewController() = default;

void ZVKSettingForVideoViewController::awakeFromNib()
{
    auto& o = *outlets;
    o.boxOfVideoQuality->setTitle(localized("setting.video.quality"));
    o.boxOfVideoQualityNormal->setTitle(localized("setting.video.quality_normal"));
    o.boxOfVideoQualityHigh->setTitle(localized("setting.video.quality_high"));
    o.boxOfVideoQualitySuperhigh->setTitle(localized("setting.video.quality_highest"));
    o.boxOfVideoResolution->setTitle(localized("setting.video.resolution"));
    o.boxOfVideoFrameRate->setTitle(localized("setting.video.frame_rate"));
    o.boxOfVideoSetting->setTitle(localized("setting.video.video_setting"));
    o.brightnessLabel->setText(localized("brightness"));
    o.tintingLabel->setText(localized("tinting"));
    o.sharpnessLabel->setText(localized("sharpness"));
    o.noisefilterLabel->setText(localized("noisefilter"));
    o.bitrateGuide->setText(localized("setting.video.bitrate_guide"));
    o.tintingGuide->setText(localized("setting.video.tinting_guide"));
    o.noisefilterGuide->setText(localized("setting.video.noisefilter_guide"));

    setSegmentLabels(*o.videoResolution,
        {localized("setting.video.resolution_fhd"), localized("setting.video.resolution_hd")});
    setSegmentLabels(*o.videoFrameRate,
        {localized("setting.video.frame_rate_24"), localized("setting.video.frame_rate_30")});
    setSegmentLabels(*o.videoBrightness, {"1", remarkedLabel("2", "default"), "3", "4", "5"});
    setSegmentLabels(*o.videoTinting,
        {localized("setting.video.tinting_notuse"), localized("setting.video.tinting_CPL"),
            localized("setting.video.tinting_light"), localized("setting.video.tinting_dark")});
    setSegmentLabels(*o.videoSharpness, {"1", "2", remarkedLabel("3", "default"), "4", "5"});
    setSegmentLabels(*o.videoNoisefilter, {"1", remarkedLabel("2", "default"), "3", "4", "5"});

    o.videoResolution->setAccessibleName(o.boxOfVideoResolution->title());
    o.videoFrameRate->setAccessibleName(o.boxOfVideoFrameRate->title());
    o.videoEncodingBitrate->setAccessibleName(o.boxOfVideoQuality->title());
    o.videoBrightness->setAccessibleName(o.brightnessLabel->text());
    o.videoTinting->setAccessibleName(o.tintingLabel->text());
    o.videoSharpness->setAccessibleName(o.sharpnessLabel->text());
    o.videoNoisefilter->setAccessibleName(o.noisefilterLabel->text());
    explain(*o.videoTinting, "setting.video.tinting_guide");
    explain(*o.videoNoisefilter, "setting.video.noisefilter_guide");
    explain(*o.videoEncodingBitrate, "setting.video.bitrate_guide");
    setBPStext(false);
    arrangeBitrateCells();
}

/// Each of the three quality boxes frames two cells: columns of equal width that keep the boxes' pace.
void ZVKSettingForVideoViewController::arrangeBitrateCells()
{
    constexpr int inside = 14;
    auto& cells = static_cast<QGridLayout&>(*outlets->videoEncodingBitrate->layout());
    cells.setContentsMargins(inside, 0, inside, 12);
    cells.setHorizontalSpacing(outlets->qualityBoxesLayout->spacing() + 2 * inside);
    for (int column = 0; column < outlets->videoEncodingBitrate->columns(); ++column)
        cells.setColumnStretch(column, 1);
    outlets->videoEncodingBitrate->raise();
}

void ZVKSettingForVideoViewController::setBPStext(bool isSecondResolution)
{
    QStringList titles;
    for (const uint32_t rate : bitrates[isSecondResolution])
        titles += localized(std::to_string(rate));
    setCellTitles(*outlets->videoEncodingBitrate, titles);
}

void ZVKSettingForVideoViewController::showRecord(const _FILEDATA& record)
{
    auto& o = *outlets;
    o.videoEncodingBitrate->selectCell(cellOfBitrate(record.vid_enc_res, record.vid_enc_bitrate));
    setBPStext(record.vid_enc_res != 0);
    o.videoResolution->setSelectedSegment(record.vid_enc_res);
    // The rates of a resolution that is not known are not known either.
    o.videoEncodingBitrate->setEnabled(record.vid_enc_res < bitrates.size());
    o.videoFrameRate->setSelectedSegment(segmentOfFramerate(record.vid_framerate));
    o.videoBrightness->setSelectedSegment(segmentOfBrightness(record.vid_brightness));
    o.videoTinting->setSelectedSegment(record.Tinting);
    o.videoSharpness->setSelectedSegment(qint64(record.vid_sharpness) - 1);
    o.videoNoisefilter->setSelectedSegment(qint64(record.vid_hue) - 1);
}

void ZVKSettingForVideoViewController::clickvideoResolutionSegment()
{
    if (!fileData)
        return;
    setBPStext(outlets->videoResolution->selectedSegment() != 0);
    outlets->videoEncodingBitrate->setEnabled(true);
}

void ZVKSettingForVideoViewController::bindControls()
{
    auto& o = *outlets;
    // The selected cell stands for another rate then.
    addSetting({o.videoResolution}, [this](_FILEDATA& record) {
        storeSegment(*outlets->videoResolution, record.vid_enc_res);
        storeBitrate(record);
    });
    addSetting({o.videoEncodingBitrate}, [this](_FILEDATA& record) { storeBitrate(record); });
    addSegments(o.videoFrameRate, &_FILEDATA::vid_framerate, framerates);
    addSegments(o.videoBrightness, &_FILEDATA::vid_brightness, darkest, brightnessStep);
    addSegments(o.videoTinting, &_FILEDATA::Tinting);
    addSegments(o.videoSharpness, &_FILEDATA::vid_sharpness, 1);
    addSegments(o.videoNoisefilter, &_FILEDATA::vid_hue, 1);
}

void ZVKSettingForVideoViewController::storeBitrate(_FILEDATA& record) const
{
    const int cell = outlets->videoEncodingBitrate->selectedCell();
    if (cell >= 0 && record.vid_enc_res < bitrates.size())
        record.vid_enc_bitrate = bitrates[record.vid_enc_res][size_t(cell)] * 1000;
}
