#pragma once

#include <string>
#include <string_view>

/// What the camera's two sentences say about one moment. Times are UTC.
struct DeviceFix {
    int year = 2015; ///< 2000 to 2099
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool isValid = true;
    double latitude = 0; ///< ddmm.mmmm
    double longitude = 0; ///< dddmm.mmmm
    char ns = 'N';
    char ew = 'E';
    double speed = 0;
    double course = 0; ///< degrees
    int satellitesUsed = 0;
    double hdop = 0;
};

/// "$" + body + "*" + the NMEA 0183 checksum (the XOR of the body's bytes, two hexadecimal digits);
/// no line terminator.
std::string sentenceWithChecksum(std::string_view body);

/// "$GA,hhmmss,A|V,ddmm.mmmm,dddmm.mmmm,speed,N|S,E|W*hh"
std::string gaSentence(const DeviceFix& fix);

/// "$GC,hhmmss,ddmmyy,,,satellites,HDOP,speed,course*hh"
std::string gcSentence(const DeviceFix& fix);

/// Both sentences, "$GA" first, each ended by CR LF.
std::string deviceText(const DeviceFix& fix);
