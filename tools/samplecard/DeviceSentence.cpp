#include "tools/samplecard/DeviceSentence.h"

#include "common/Log.h"

std::string sentenceWithChecksum(std::string_view body)
{
    unsigned checksum = 0;
    for (const char c : body)
        checksum ^= static_cast<unsigned char>(c);
    return formatted("$%.*s*%02X", static_cast<int>(body.size()), body.data(), checksum);
}

std::string gaSentence(const DeviceFix& fix)
{
    return sentenceWithChecksum(
        formatted("GA,%02d%02d%02d,%c,%09.4f,%010.4f,%.1f,%c,%c", fix.hour, fix.minute, fix.second,
            fix.isValid ? 'A' : 'V', fix.latitude, fix.longitude, fix.speed, fix.ns, fix.ew));
}

std::string gcSentence(const DeviceFix& fix)
{
    return sentenceWithChecksum(
        formatted("GC,%02d%02d%02d,%02d%02d%02d,,,%02d,%.1f,%.1f,%.1f", fix.hour, fix.minute, fix.second,
            fix.day, fix.month, fix.year % 100, fix.satellitesUsed, fix.hdop, fix.speed, fix.course));
}

std::string deviceText(const DeviceFix& fix)
{
    return gaSentence(fix) + "\r\n" + gcSentence(fix) + "\r\n";
}
