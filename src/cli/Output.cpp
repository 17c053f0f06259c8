#include "cli/Output.h"

#include "cli/Text.h"
#include "platform/Format.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace calorivo {

bool Output::flush() {
    if (descriptor_ < 0) return true;
    if (!isReaderGone_ && problem_.empty() && !text_.empty()) writeAll(text_);
    text_.clear();
    return problem_.empty();
}

bool Output::writeAll(std::string_view rest) {
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            pollfd wait{descriptor_, POLLOUT, 0};
            poll(&wait, 1, -1);
        } else if (errno == EPIPE) {
            isReaderGone_ = true;
            return true;
        } else if (errno != EINTR) {
            problem_ = std::generic_category().message(errno);
            return false;
        }
    }
    return true;
}

void complain(Output& errors, std::string_view message) {
    errors.write("calorivo-cli: ").write(cleanText(message)).write("\n");
}

void ProblemList::close() {
    if (count_ > shown) complain(errors_, format("and %llu more like these", count_ - shown));
    count_ = 0;
}

}  // namespace calorivo
