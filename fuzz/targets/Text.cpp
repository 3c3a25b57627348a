#include "cli/Escapes.h"
#include "fuzz/Require.h"
#include "fuzz/WellFormed.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, size_t size)
{
    const std::string_view text = textOf(input, size);
    const std::string visible = visibleText(text);
    require(isValidUtf8(visible) && visibleText(visible) == visible);
    for (const char32_t unit : utf16Units(visible))
        require(unit >= ' ' && (unit < 0x7F || unit > 0x9F) && (unit < 0x202A || unit > 0x202E)
            && (unit < 0x2066 || unit > 0x2069));
    require(utf16Units(text).size() <= size);
    require(asciiLower(asciiLower(text)) == asciiLower(text));
    require(JsonCheck::passes(cli::jsonString(text)));
    require(isXml("<?xml ?><a b=\"" + cli::xmlText(text) + "\">" + cli::xmlText(text) + "</a>"));
    return 0;
}
