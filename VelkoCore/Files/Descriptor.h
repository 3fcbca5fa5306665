#pragma once

#include <cerrno>
#include <filesystem>
#include <utility>

#include "VelkoCore/Files/AtomicFile.h"
#include "VelkoCore/NonCopyable.h"

namespace velko {

/// Makes a call again for as long as signals interrupt it.
template <class Call>
auto uninterrupted(Call call) {
    auto result = call();
    while (result == -1 && errno == EINTR) {
        result = call();
    }
    return result;
}

/// An open file, closed at the latest when it goes out of scope. The calls outlive it.
class Descriptor final : private NonCopyable {
 public:
    Descriptor(const FileCalls& calls, const std::filesystem::path& file, int flags, unsigned mode = 0)
        : calls_(calls), number_(uninterrupted([&] { return calls.open(file.c_str(), flags, mode); })) {}

    ~Descriptor() { static_cast<void>(close()); }

    [[nodiscard]] bool isOpen() const { return number_ != -1; }
    [[nodiscard]] int number() const { return number_; }

    /// Closes once. An interrupted close has closed the file all the same.
    [[nodiscard]] bool close() {
        if (!isOpen()) {
            return true;
        }
        const int result = calls_.close(std::exchange(number_, -1));
        return result == 0 || errno == EINTR;
    }

 private:
    const FileCalls& calls_;
    int number_;
};

}  // namespace velko
