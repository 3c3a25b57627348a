#pragma once

#include <cstdlib>
#include <string>

/// Writes an AVI film with ffmpeg: a moving test card ("1920x1080:rate=30:duration=25") in H.264 with those
/// options. The path holds no quotes. False when that fails.
inline bool writeFilm(const std::string& path, const std::string& card, const std::string& options)
{
    const std::string command = "ffmpeg -v error -f lavfi -i testsrc2=size=" + card
        + " -c:v libx264 -preset ultrafast -pix_fmt yuv420p " + options + " -f avi '" + path + "'";
    return std::system(command.c_str()) == 0;
}
