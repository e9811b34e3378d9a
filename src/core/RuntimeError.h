#pragma once
// The error a failing operation raises to its caller: a number, the routine that raised it
// and a description, as the user's message box shows them.
#include <stdexcept>
#include <string>

namespace quorbel {

inline constexpr int kErrOverflow = 6;

class RuntimeError : public std::runtime_error {
public:
    RuntimeError(int number, std::string source, std::string description)
        : std::runtime_error(description), number_(number), source_(std::move(source)),
          description_(std::move(description)) {}

    int Number() const noexcept { return number_; }
    const std::string& Source() const noexcept { return source_; }
    const std::string& Description() const noexcept { return description_; }

private:
    int number_;
    std::string source_;
    std::string description_;
};

[[noreturn]] inline void RaiseOverflow(const char* source) {
    throw RuntimeError(kErrOverflow, source, "Overflow");
}

}  // namespace quorbel
