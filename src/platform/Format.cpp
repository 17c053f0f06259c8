#include "platform/Format.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace calorivo {

class Formatter {
  public:
    Formatter(std::string& out, std::initializer_list<FormatArgument> arguments)
        : out_(out), next_(arguments.begin()), end_(arguments.end()) {}

    void fill(std::string_view pattern) {
        while (!pattern.empty()) {
            const std::size_t percent = pattern.find('%');
            out_.append(pattern.substr(0, percent));
            if (percent == std::string_view::npos) return;
            pattern.remove_prefix(percent);
            const std::size_t length = place(pattern);
            pattern.remove_prefix(length);
        }
    }

  private:
    struct Placeholder {
        bool isLeft = false;
        bool isZeroFilled = false;
        std::size_t width = 0;
        int precision = 6;
        bool isLong = false;
        char conversion = 0;
        std::size_t length = 0;
    };

    static Placeholder parse(std::string_view text) {
        Placeholder p;
        std::size_t at = 1;
        const auto peek = [&] { return at < text.size() ? text[at] : '\0'; };
        const auto number = [&](std::size_t limit) {
            std::size_t value = 0;
            for (; peek() >= '0' && peek() <= '9'; ++at)
                value = std::min(limit, value * 10 + static_cast<std::size_t>(peek() - '0'));
            return value;
        };
        for (; peek() == '-' || peek() == '0'; ++at) (peek() == '-' ? p.isLeft : p.isZeroFilled) = true;
        p.width = number(999);
        if (peek() == '.') {
            ++at;
            p.precision = static_cast<int>(number(40));
        }
        for (; peek() == 'l'; ++at) p.isLong = true;
        p.conversion = peek();
        p.length = at < text.size() ? at + 1 : at;
        return p;
    }

    /// Writes what the placeholder at the front of `text` stands for; returns the placeholder's length.
    std::size_t place(std::string_view text) {
        const Placeholder p = parse(text);
        if (p.conversion == '%') {
            out_.push_back('%');
        } else if (next_ != end_ && write(p, *next_)) {
            ++next_;
        } else {
            out_.append(text.substr(0, p.length));
        }
        return p.length;
    }

    bool write(const Placeholder& p, const FormatArgument& value) {
        using Kind = FormatArgument::Kind;
        switch (p.conversion) {
            case '@':
            case 's':
                if (value.kind_ != Kind::text) return false;
                pad(p, value.text_);
                return true;
            case 'c':
                if (value.kind_ != Kind::whole) return false;
                character(p, static_cast<char>(value.whole_));
                return true;
            case 'd':
                if (value.kind_ != Kind::whole) return false;
                digits(p, p.isLong ? value.whole_ : static_cast<std::int32_t>(value.whole_), 10);
                return true;
            case 'u':
            case 'x':
            case 'X':
                if (value.kind_ != Kind::whole) return false;
                unsignedDigits(p, static_cast<std::uint64_t>(value.whole_));
                return true;
            case 'f':
                if (value.kind_ != Kind::fraction) return false;
                fraction(p, value.fraction_);
                return true;
            default:
                return false;
        }
    }

    void character(const Placeholder& p, char c) { pad(p, {&c, 1}); }

    void unsignedDigits(const Placeholder& p, std::uint64_t number) {
        const int base = p.conversion == 'u' ? 10 : 16;
        if (p.isLong)
            digits(p, number, base);
        else
            digits(p, static_cast<std::uint32_t>(number), base);
    }

    void digits(const Placeholder& p, auto number, int base) {
        std::array<char, 24> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), number, base).ptr;
        if (p.conversion == 'X')
            for (char& c : text) c = c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
        pad(p, {text.data(), static_cast<std::size_t>(end - text.data())});
    }

    void fraction(const Placeholder& p, double number) {
        // 2 to the 53rd: up to here a double holds every whole number.
        constexpr double exactlyWhole = 9007199254740992.0;
        if (p.precision == 0 && std::fabs(number) < exactlyWhole) {
            // Round half to even, as printf does with the exact binary value.
            const double rounded = std::nearbyint(number);
            if (rounded != 0 || !std::signbit(rounded)) {
                digits(p, static_cast<std::int64_t>(rounded), 10);
                return;
            }
        }
        std::array<char, 400> text{};
        const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                       std::chars_format::fixed, p.precision)
                             .ptr;
        Placeholder filled = p;
        filled.isZeroFilled = p.isZeroFilled && std::isfinite(number);
        pad(filled, {text.data(), static_cast<std::size_t>(end - text.data())});
    }

    void pad(const Placeholder& p, std::string_view text) {
        const std::size_t missing = text.size() < p.width ? p.width - text.size() : 0;
        if (p.isLeft) {
            out_.append(text).append(missing, ' ');
        } else if (p.isZeroFilled && !text.empty() && text.front() == '-') {
            out_.append(1, '-').append(missing, '0').append(text.substr(1));
        } else {
            out_.append(missing, p.isZeroFilled ? '0' : ' ').append(text);
        }
    }

    std::string& out_;
    const FormatArgument* next_;
    const FormatArgument* end_;
};

void appendFormat(std::string& out, std::string_view pattern,
                  std::initializer_list<FormatArgument> arguments) {
    Formatter(out, arguments).fill(pattern);
}

std::string shortestText(double number) {
    std::array<char, 32> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number).ptr;
    return {text.data(), end};
}

}  // namespace calorivo
