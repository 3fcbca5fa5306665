#include "Playground/Web/Panels.h"

#include <algorithm>
#include <ranges>
#include <system_error>

#include "VelkoCore/Files/AtomicFile.h"

namespace velko::web {

namespace {

constexpr std::size_t longestName = 100;  ///< bytes
constexpr std::size_t mostNames = 200;

}  // namespace

bool isPlainFileName(std::string_view name) {
    const auto isOdd = [](char byte) {
        return byte == '/' || byte == '\\' || static_cast<unsigned char>(byte) < 0x20U;
    };
    return !name.empty() && name.size() <= longestName && !name.starts_with('.') &&
           std::ranges::none_of(name, isOdd);
}

std::vector<std::string> documentNames(const std::filesystem::path& documents) {
    std::vector<std::string> names;
    std::error_code error;
    for (auto entry = std::filesystem::directory_iterator(documents, error);
         !error && entry != std::filesystem::directory_iterator() && names.size() < mostNames;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (std::error_code ignored; isPlainFileName(name) && entry->is_regular_file(ignored)) {
            names.push_back(name);
        }
    }
    std::ranges::sort(names);
    return names;
}

Done answerPanel(Session& session, const Fields& fields) {
    SimulatedDialogs& dialogs = session.mac().dialogs;
    if (!dialogs.isPanelOpen()) {
        return std::unexpected("No panel is open.");
    }
    const auto name = fields.text("file");
    if (!name) {
        dialogs.choose(std::nullopt);
        return {};
    }
    if (!isPlainFileName(*name)) {
        return std::unexpected("A file can't be called that.");
    }
    const auto file = session.world().documents() / *name;
    std::error_code error;
    if (const auto status = std::filesystem::status(file, error);
        std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        return std::unexpected("That is no file.");
    }
    if (const auto text = fields.text("text")) {
        const auto kept = AtomicFile::replace(file, *text);
        if (!kept) {
            return std::unexpected(kept.error().description);
        }
    }
    dialogs.choose(file);
    return {};
}

}  // namespace velko::web
