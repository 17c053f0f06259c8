#include "host/KeysInput.h"

#include "platform/Format.h"
#include "platform/Utf8.h"
#include "sensors/KeysFile.h"

#include <algorithm>

namespace calorivo {

std::string KeysInput::load(const std::string& path) {
    contents_ = files_.contentsAtPath(path, keysFileLimit);
    path_ = path;
    if (!contents_.isRead()) return path + ": " + contents_.problem;
    const auto invalid = firstInvalidByte(contents_.text);
    if (!invalid) return {};
    const auto lineEnds = std::count(contents_.text.begin(),
                                     contents_.text.begin() + static_cast<std::ptrdiff_t>(*invalid), '\n');
    return format("%@:%llu: not UTF-8 text (byte %llu)", path, lineEnds + 1, *invalid + 1);
}

FileContents KeysInput::contentsAtPath(const std::string& path, std::size_t limit) {
    return path == path_ ? contents_ : files_.contentsAtPath(path, limit);
}

}  // namespace calorivo
