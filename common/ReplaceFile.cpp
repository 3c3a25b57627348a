#include "common/ReplaceFile.h"

#include "common/StreamedFile.h"

#include <fcntl.h>
#include <optional>
#include <string>

namespace {

/// Whether the file holds these bytes, read from the medium where the system can drop its cache.
bool readsBack(const FilePlace& place, std::string_view contents)
{
    FileError ignored;
    if (const Descriptor file = place.open(ignored))
        ::posix_fadvise(file.get(), 0, 0, POSIX_FADV_DONTNEED);
    return place.contents(contents.size(), ignored) == contents;
}

} // namespace

FileError replaceFile(const FilePlace& place, std::string_view contents)
{
    FileError ignored;
    const auto before = place.contents(contents.size(), ignored);
    StreamedFile file(place, static_cast<int64_t>(contents.size()));
    const bool mayBeMixed = file.isInPlace();
    file.write(contents);
    FileError failure = file.finish();
    if (!failure && !readsBack(place, contents))
        failure.code = FileError::notReadBack;
    if (failure && mayBeMixed && before && before->size() == contents.size() && !readsBack(place, *before)) {
        StreamedFile again(place, static_cast<int64_t>(before->size()));
        again.write(*before);
        (void)again.finish();
    }
    return failure;
}
