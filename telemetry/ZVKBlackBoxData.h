#pragma once

#include "common/ByteSource.h"
#include "common/FilePlace.h"
#include "telemetry/GSensorList.h"
#include "telemetry/KeptFix.h"
#include "telemetry/PairedHeaders.h"
#include "telemetry/RunList.h"
#include "telemetry/WalkEnd.h"
#include "telemetry/ZVKTimeEvent.h"
#include "telemetry/ZVKZAVIKNMEASentenceParser.h"

#include <cstdint>
#include <stop_token>
#include <vector>

/// The telemetry of one recording: what the camera wrote into the file's "JUNK" chunk.
///
/// File layout (little-endian, packed): "RIFF", size, "AVI ", then chunks of 4-byte id, 32-bit size and body,
/// without padding after odd sizes. The body of the first "JUNK" chunk is a sequence of records:
///
///   "0GDA"  a G-sensor record, `_AVI_GSENSOR_DATA_T`
///   "0GPS"  a GPS record: `_AVI_GPS_DATA_T`, `dwExtLength` bytes of sentences, trailer
///   other   no record; the next four bytes are tried
///
/// Trailer: with `KM` '1' or '9' 7 bytes, otherwise one byte back; then a 0x00 byte belongs to the record and
/// any other byte to what follows.
///
/// Memory: a small multiple of the bytes that the records take in the file, however small or many they are.
/// A value: it can be filled on one thread and moved to another. One thread at a time.
class ZVKBlackBoxData {
public:
    uint8_t m_udatSpeedDisplay = 0; ///< byte 4 of the last frame-data record
    uint8_t m_udatIncludeEvent = 0; ///< byte 7
    uint8_t m_udatRecPark = 0; ///< byte 6
    uint32_t m_LastTimeEventType = 0;
    ZVKZAVIKNMEASentenceParser m_NMEAParser;
    RunList<ZVKGpsData, KeptFix> m_NMEAs; ///< the current fix after each "$G" sentence, in text order
    GSensorList m_GSensors; ///< one per G-sensor record, in file order, in g
    std::vector<int32_t> m_Times; ///< seconds since 1970 of the time records
    std::vector<ZVKTimeEvent> m_TimeEvents;
    /// The GPS records in file order, without the skipped ones.
    std::vector<ZVKGpsRecord> gpsRecords;

    /// The G-sensor records, parallel to `m_GSensors`.
    const std::vector<ZVKAviGSensorData>& m_vGSensorData() const { return m_GSensors.records(); }
    /// GPS headers, one per paired sample: element i belongs to `m_GSensors[i]`. A header is paired with the
    /// samples that wait before it in the file, up to and including the first of its own tenth of a second
    /// or later; the samples after the last header have none.
    PairedHeaders m_vGpsData() const { return PairedHeaders(gpsRecords); }

    /// Empties all lists and sets everything back to a new object's values.
    void clear();

    /// Reads one recording's side data, after `clear`. False when the file (a UTF-8 path) cannot be opened,
    /// is no AVI, has no side data or ends inside a G-sensor record, when the device fails and when a stop
    /// was requested; whatever was gathered before stays readable. `walkEnd` tells why. One sequential pass;
    /// the video is skipped by seeking. Without enough memory the result is false, and nothing is kept.
    ///
    /// A record whose text is longer than `largestText` is skipped; a text longer than the rest of the file
    /// ends the walk. Of a text that the file's end cuts, what is there is parsed.
    bool ExtractStreamInformation(const char* path, std::stop_token stop = {});
    /// The same from the beginning of any source.
    bool ExtractStreamInformation(ByteSource& source, std::stop_token stop = {});
    WalkEnd walkEnd() const { return ending; }
    /// Why the file could not be opened.
    FileError openError() const { return notOpened; }

    static constexpr int32_t largestText = 512;

    /// Splits the text into sentences (each from "$" to CR, LF or NUL, which become NUL in the buffer), feeds
    /// those that begin with "$G" to the parser and keeps a snapshot after each of them, accepted or not.
    /// Text after the last terminator is not parsed. False for a null buffer and for no bytes.
    bool ParseNMEA(char* buffer, uint32_t bufferSize);
    /// Appends the record and so its sample. The size is ignored. Always true.
    bool ParseGSensor(const _AVI_GSENSOR_DATA_T* record, uint32_t bufferSize);
    /// Takes an 8-byte frame-data record; false for a null buffer and for any other size.
    bool ParseFrameData(const uint8_t* buffer, uint32_t bufferSize);
    /// Takes a time record: bytes 0 to 3 seconds since 1970-01-01 00:00 UTC (little-endian), bytes 12 to 15
    /// event type (big-endian). False for a null buffer and for fewer than 16 bytes.
    bool ParseTime(const uint8_t* buffer, uint32_t bufferSize);
    /// Without effect. Always true.
    bool ParseTimeEvent(const uint8_t* buffer, uint32_t bufferSize);
    /// The number of gaps between the samples, at least 1.
    uint64_t frameCount() const;

private:
    void takeSentence(std::string_view sentence);

    WalkEnd ending = WalkEnd::notWalked;
    FileError notOpened;
};
