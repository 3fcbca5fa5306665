#include "VelkoCore/Files/Json.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

namespace velko {

namespace {

using Library = nlohmann::json;

/// Builds the tree while the text is read. The library calls it without recursion and reports a syntax
/// error by `parse_error`, so nothing is thrown and no text can exhaust the stack.
class Builder final : public nlohmann::json_sax<Library> {
 public:
    bool null() override { return add(nullptr); }
    bool boolean(bool value) override { return add(value); }
    bool number_integer(std::int64_t value) override { return add(value); }
    bool number_unsigned(std::uint64_t value) override { return add(value); }
    bool number_float(double value, const std::string& /*text*/) override { return add(value); }
    bool string(std::string& value) override { return add(std::move(value)); }
    bool binary(Library::binary_t& /*value*/) override { return false; }
    bool start_object(std::size_t /*count*/) override { return open(Json::Object{}); }
    bool start_array(std::size_t /*count*/) override { return open(Json::Array{}); }
    bool end_object() override { return close(); }
    bool end_array() override { return close(); }

    bool key(std::string& value) override {
        key_ = std::move(value);
        return true;
    }

    bool parse_error(std::size_t position, const std::string& /*token*/,
                     const Library::exception& /*error*/) override {
        errorPosition_ = position;
        return false;
    }

    [[nodiscard]] Json takeRoot() { return std::move(root_); }

    /// Why building ended early although the text was valid so far.
    [[nodiscard]] const std::optional<std::string>& refusal() const { return refusal_; }

    /// How many bytes had been read when the syntax error was noticed.
    [[nodiscard]] std::size_t errorPosition() const { return errorPosition_; }

 private:
    bool add(Json::Value value) { return place(std::move(value)) != nullptr; }

    bool open(Json::Value container) {
        if (open_.size() == Json::deepest) {
            refusal_ = "nested more than " + std::to_string(Json::deepest) + " levels deep";
            return false;
        }
        Json* placed = place(std::move(container));
        open_.push_back(placed);
        return placed != nullptr;
    }

    bool close() {
        open_.pop_back();
        return true;
    }

    Json* place(Json::Value value) {
        if (++count_ > Json::mostValues) {
            refusal_ = "more than " + std::to_string(Json::mostValues) + " values";
            return nullptr;
        }
        if (open_.empty()) {
            root_.value = std::move(value);
            return &root_;
        }
        if (auto* array = std::get_if<Json::Array>(&open_.back()->value)) {
            return &array->emplace_back(Json{std::move(value)});
        }
        Json& member = std::get<Json::Object>(open_.back()->value)[std::move(key_)];
        member.value = std::move(value);
        return &member;
    }

    Json root_;
    std::vector<Json*> open_;  ///< from the root inwards; a parent does not grow while its child is open
    std::string key_;
    std::size_t count_ = 0;
    std::size_t errorPosition_ = 0;
    std::optional<std::string> refusal_;
};

std::string describePlace(std::string_view text, std::size_t bytesRead) {
    const std::string_view before = text.substr(0, bytesRead == 0 ? 0 : bytesRead - 1);
    const auto line = 1 + std::ranges::count(before, '\n');
    const std::size_t lineFeed = before.rfind('\n');
    const std::size_t column =
        lineFeed == std::string_view::npos ? before.size() : before.size() - lineFeed - 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column + 1);
}

/// Writes values as the library does, which would first need a tree of its own. It still writes what is not
/// plain.
class Writer {
 public:
    explicit Writer(bool isIndented) : isIndented_(isIndented) {}

    void write(const Json& json) {
        std::visit([this](const auto& value) { write(value); }, json.value);
    }
    [[nodiscard]] std::string take() && { return std::move(text_) + '\n'; }

 private:
    void write(const std::string& value) {
        const auto isPlain = [](char letter) {
            return letter >= ' ' && letter < 127 && letter != '"' && letter != '\\';
        };
        if (std::ranges::all_of(value, isPlain)) {
            text_.append(1, '"').append(value).append(1, '"');
        } else {
            text_ += dump(value);
        }
    }
    void write(const Json::Array& array) {
        writeAll('[', array, ']', [this](const Json& element) { write(element); });
    }
    void write(const Json::Object& object) {
        writeAll('{', object, '}', [this](const auto& member) {
            write(member.first);
            text_ += isIndented_ ? ": " : ":";
            write(member.second);
        });
    }
    void write(const auto& value) { text_ += dump(value); }

    [[nodiscard]] static std::string dump(const Library& value) {
        return value.dump(-1, ' ', false, Library::error_handler_t::replace);
    }

    void writeAll(char first, const auto& all, char last, const auto& writeOne) {
        text_ += first;
        ++depth_;
        const char* separator = "";
        for (const auto& each : all) {
            text_ += separator;
            separator = ",";
            beginLine();
            writeOne(each);
        }
        --depth_;
        if (!all.empty()) {
            beginLine();
        }
        text_ += last;
    }
    void beginLine() {
        if (isIndented_) {
            text_.append(1, '\n').append(2 * depth_, ' ');
        }
    }

    bool isIndented_;
    std::size_t depth_ = 0;
    std::string text_;
};

std::string textOf(const Json& json, bool isIndented) {
    Writer writer(isIndented);
    writer.write(json);
    return std::move(writer).take();
}

}  // namespace

std::expected<Json, DecodingError> Json::parse(std::string_view text) {
    if (text.size() > longest) {
        return std::unexpected(DecodingError{"longer than " + std::to_string(longest >> 20U) + " MiB"});
    }
    Builder builder;
    if (Library::sax_parse(text, &builder)) {
        return builder.takeRoot();
    }
    if (const auto& refusal = builder.refusal()) {
        return std::unexpected(DecodingError{*refusal});
    }
    return std::unexpected(
        DecodingError{"not valid JSON at " + describePlace(text, builder.errorPosition())});
}

std::string Json::print() const {
    return textOf(*this, true);
}

std::string Json::printLine() const {
    return textOf(*this, false);
}

}  // namespace velko
