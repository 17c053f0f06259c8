#include "app/StringsTable.h"

#include "platform/Format.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace calorivo {

namespace {

void appendUtf8(std::string& out, char32_t code) {
    const auto put = [&out](char32_t byte) {
        out.push_back(static_cast<char>(static_cast<std::uint8_t>(byte)));
    };
    const auto tail = [&put, code](unsigned shift) { put(0x80U | ((code >> shift) & 0x3FU)); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0U | (code >> 6U));
        tail(0);
    } else if (code < 0x10000) {
        put(0xE0U | (code >> 12U));
        tail(6);
        tail(0);
    } else {
        put(0xF0U | (code >> 18U));
        tail(12);
        tail(6);
        tail(0);
    }
}

/// Puts UTF-16 units together to characters.
class Utf16Text {
  public:
    void add(std::uint32_t unit) {
        if (high_ != 0 && unit >= 0xDC00 && unit <= 0xDFFF) {
            appendUtf8(text_, 0x10000 + ((std::exchange(high_, 0) - 0xD800) << 10U) + (unit - 0xDC00));
            return;
        }
        endHalf();
        if (unit >= 0xD800 && unit <= 0xDBFF)
            high_ = unit;
        else
            appendUtf8(text_, unit >= 0xDC00 && unit <= 0xDFFF ? replacement : unit);
    }
    void add(std::string_view utf8) {
        endHalf();
        text_.append(utf8);
    }
    [[nodiscard]] std::string take() {
        endHalf();
        return std::move(text_);
    }

  private:
    static constexpr char32_t replacement = 0xFFFD;

    void endHalf() {
        if (std::exchange(high_, 0) != 0) appendUtf8(text_, replacement);
    }

    std::string text_;
    std::uint32_t high_ = 0;
};

/// The bytes of a file as UTF-8.
std::string utf8Text(std::string_view bytes) {
    const bool isBigEndian = bytes.starts_with("\xFE\xFF");
    if (!isBigEndian && !bytes.starts_with("\xFF\xFE")) {
        if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        return std::string(bytes);
    }
    Utf16Text text;
    const auto byte = [bytes](std::size_t i) { return std::uint32_t{static_cast<std::uint8_t>(bytes[i])}; };
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
        text.add(isBigEndian ? byte(i) << 8U | byte(i + 1) : byte(i + 1) << 8U | byte(i));
    return text.take();
}

/// Reads entries until the end or the first mistake.
class Parser {
  public:
    explicit Parser(std::string_view text) : rest_(text), size_(text.size()) {}

    template <typename Add>
    void run(const Add& add) {
        while (skipBlanks() && !rest_.empty()) {
            const std::size_t start = position();
            std::string key;
            std::string value;
            if (!quoted(key, "a key in quotes") || !skipBlanks() || !token('=') || !skipBlanks() ||
                !quoted(value, "a text in quotes") || !skipBlanks() || !token(';'))
                return;
            if (!add(std::move(key), std::move(value))) return fail(start, "this key stands above already");
        }
    }
    [[nodiscard]] std::string_view reason() const { return reason_; }
    [[nodiscard]] std::size_t mistake() const { return mistake_; }

  private:
    [[nodiscard]] std::size_t position() const { return size_ - rest_.size(); }

    void fail(std::size_t position, std::string reason) {
        mistake_ = position;
        reason_ = std::move(reason);
    }
    bool fail(std::string reason) {
        fail(position(), std::move(reason));
        return false;
    }

    /// Blanks and comments; false for a comment without an end.
    bool skipBlanks() {
        for (;;) {
            rest_.remove_prefix(std::min(rest_.size(), rest_.find_first_not_of(" \t\r\n")));
            if (rest_.starts_with("//")) {
                rest_.remove_prefix(std::min(rest_.size(), rest_.find('\n')));
            } else if (rest_.starts_with("/*")) {
                const std::size_t end = rest_.find("*/", 2);
                if (end == std::string_view::npos) return fail("a comment without its end");
                rest_.remove_prefix(end + 2);
            } else {
                return true;
            }
        }
    }

    bool token(char wanted) {
        if (rest_.empty() || rest_.front() != wanted) return fail(format("expected %c", wanted));
        rest_.remove_prefix(1);
        return true;
    }

    bool quoted(std::string& out, std::string_view what) {
        if (!rest_.starts_with('"')) return fail(format("expected %@", what));
        const std::size_t start = position();
        rest_.remove_prefix(1);
        Utf16Text text;
        for (;;) {
            const std::size_t plain = rest_.find_first_of("\"\\");
            if (plain == std::string_view::npos) {
                fail(start, "a quotation mark without its partner");
                return false;
            }
            if (plain > 0) text.add(rest_.substr(0, plain));
            rest_.remove_prefix(plain);
            if (rest_.front() == '"') break;
            if (!escape(text)) return false;
        }
        rest_.remove_prefix(1);
        out = text.take();
        return true;
    }

    bool escape(Utf16Text& text) {
        constexpr std::string_view names = "\"\\ntr";
        constexpr std::string_view meanings = "\"\\\n\t\r";
        const char name = rest_.size() > 1 ? rest_[1] : '\0';
        const std::size_t found = names.find(name);
        if (found != std::string_view::npos) {
            text.add(meanings.substr(found, 1));
            rest_.remove_prefix(2);
            return true;
        }
        if (name == 'U') return unit(text);
        return fail("an escape that means nothing");
    }

    bool unit(Utf16Text& text) {
        constexpr std::size_t escapeLength = 6;
        std::uint32_t code = 0;
        if (rest_.size() < escapeLength) return fail("\\U takes four hexadecimal digits");
        for (const char c : rest_.substr(2, 4)) {
            constexpr std::string_view digits = "0123456789abcdef";
            const char lower = c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c;
            const std::size_t digit = digits.find(lower);
            if (digit == std::string_view::npos) return fail("\\U takes four hexadecimal digits");
            code = code << 4U | static_cast<std::uint32_t>(digit);
        }
        text.add(code);
        rest_.remove_prefix(escapeLength);
        return true;
    }

    std::string_view rest_;
    const std::size_t size_;
    std::size_t mistake_ = 0;
    std::string reason_;
};

std::string problemAt(std::string_view fileName, std::string_view text, std::size_t position,
                      std::string_view reason) {
    const auto line =
        1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n');
    return format("%@:%ld: %@", fileName, line, reason);
}

}  // namespace

StringsTable::Parsed StringsTable::parse(std::string_view bytes, std::string_view fileName) {
    Parsed parsed;
    const std::string text = utf8Text(bytes);
    if (const auto invalid = firstInvalidByte(text)) {
        parsed.problem = problemAt(fileName, text, *invalid, "neither UTF-8 nor UTF-16");
        return parsed;
    }
    Parser parser(text);
    parser.run([&parsed](std::string key, std::string value) {
        return parsed.table.entries_.emplace(std::move(key), std::move(value)).second;
    });
    if (!parser.reason().empty())
        parsed.problem = problemAt(fileName, text, parser.mistake(), parser.reason());
    return parsed;
}

std::optional<std::string_view> StringsTable::find(std::string_view key) const {
    const auto found = entries_.find(key);
    return found != entries_.end() ? std::optional<std::string_view>(found->second) : std::nullopt;
}

}  // namespace calorivo
