#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace calorivo {

/// Collects text and writes it to a descriptor in one go.
class Output {
  public:
    /// No descriptor (−1): the text is only collected.
    explicit Output(int descriptor = -1) : descriptor_(descriptor) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    Output& write(std::string_view text) {
        text_ += text;
        return *this;
    }
    /// Writes what was collected, all of it; false when that is not possible. A reader that went away is no
    /// error, but nothing more is written then.
    bool flush();
    /// What is wrong, empty when all is well ("No space left on device").
    [[nodiscard]] const std::string& problem() const { return problem_; }
    /// Nothing that is written now arrives anywhere.
    [[nodiscard]] bool isReaderGone() const { return isReaderGone_; }
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] int descriptor() const { return descriptor_; }

  private:
    bool writeAll(std::string_view rest);

    int descriptor_;
    bool isReaderGone_ = false;
    std::string text_;
    std::string problem_;
};

/// Where a command's answer and its messages go.
struct Streams {
    Output& out;
    Output& errors;
};

/// One line of the program's messages, cleaned of control characters, with the program's name before it.
void complain(Output& errors, std::string_view message);

/// At most 20 of these lines, and how many there are beside them.
class ProblemList {
  public:
    explicit ProblemList(Output& errors) : errors_(errors) {}
    void add(std::string_view message) {
        if (++count_ <= shown) complain(errors_, message);
    }
    /// Says how many were left out.
    void close();

  private:
    static constexpr std::size_t shown = 20;
    Output& errors_;
    std::size_t count_ = 0;
};

/// What the program answers to its caller.
enum ExitCode : int { exitAnswered = 0, exitNoAnswer = 1, exitWrongUse = 2 };

}  // namespace calorivo
