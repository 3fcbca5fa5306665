#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "VelkoCore/Identifiers.h"

namespace velko {

class AppController;
class Log;
struct Platform;

/// A report for those who help: what this Velko and its Mac are, and the end of the log. It names no app of
/// other makers, no person and no file. Main thread.
[[nodiscard]] std::string diagnostics(const AppController& controller, const Platform& platform,
                                      const Log& log);

/// Takes what is personal out of lines of the log. The same app gets the same number in all lines.
class Anonymiser final {
 public:
    /// A text to be replaced wherever it stands: the path of the layout, say, by "(layout)".
    struct Known {
        std::string text;
        std::string replacement;
    };

    /// `apps`: identifiers that are known, also those that do not look like one.
    Anonymiser(std::vector<Known> known, BundleIDs apps);

    [[nodiscard]] std::string operator()(std::string_view line);

 private:
    [[nodiscard]] std::string withoutApps(std::string_view line);
    [[nodiscard]] std::string numberOf(const std::string& app);

    std::vector<Known> known_;
    BundleIDs apps_;
    std::map<std::string, std::size_t> numbers_;
};

}  // namespace velko
