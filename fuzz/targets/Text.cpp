#include "cli/Escapes.h"
#include "fuzz/Require.h"
#include "fuzz/WellFormed.h"

void fuzz(std::string_view text)
{
    const std::string visible = visibleText(text);
    require(isValidUtf8(visible) && visibleText(visible) == visible);
    for (const char16_t unit : utf16Units(visible))
        require(unit >= ' ' && (unit < 0x7F || unit > 0x9F) && (unit < 0x202A || unit > 0x202E)
            && (unit < 0x2066 || unit > 0x2069));
    require(utf16Units(text).size() <= text.size() && asciiLower(text).size() == text.size());
    const std::string json = cli::jsonString(text);
    require(isValidUtf8(json) && jsonStringLength(json) == json.size());
    const std::string xml = cli::xmlText(text);
    require(isXmlText(xml) && xml.find('"') == xml.npos && xml.find("]]>") == xml.npos);
}
