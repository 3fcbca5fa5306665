#pragma once

#import <Foundation/Foundation.h>

#include "Velko/Ports/Desktop.h"

@protocol VLKUpdaterController;

namespace velko {

/// The shared application object and the workspace.
class MacApplication final : public Application {
 public:
    [[nodiscard]] Policy policy() const override;
    void setPolicy(Policy policy) override;
    void showDockIcon() override;
    void activate() override;
    void terminate() override;
    void openFile(const std::filesystem::path& file,
                  const std::optional<std::filesystem::path>& application) override;
    [[nodiscard]] Outcome moveToTrash(const std::filesystem::path& file) override;
    [[nodiscard]] Outcome copy(const std::filesystem::path& from, const std::filesystem::path& to) override;
    void openAnother(const std::filesystem::path& program, std::function<void(const Outcome&)> done) override;
};

/// The standard user defaults.
class MacDefaults final : public Defaults {
 public:
    [[nodiscard]] std::string text(const std::string& key) const override;
    void setText(const std::string& key, const std::string& text) override;
    [[nodiscard]] bool isOn(const std::string& key) const override;
    void setOn(const std::string& key, bool on) override;
};

/// This app among the user's login items.
class MacLoginItem final : public LoginItem {
 public:
    [[nodiscard]] Status status() const override;
    [[nodiscard]] std::expected<void, std::string> setEnabled(bool enabled) override;
};

/// The system's general pasteboard.
class MacPasteboard final : public Pasteboard {
 public:
    void setText(const std::string& text) override;
};

/// The Sparkle framework, when the bundle contains it.
class MacUpdater final : public Updater {
 public:
    [[nodiscard]] std::optional<std::string> whyUnavailable() const override;
    [[nodiscard]] bool checkForUpdates() override;

 private:
    id<VLKUpdaterController> controller_ = nil;  // made on first use
};

}  // namespace velko
