#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

/// Panels and alerts that wait for the user while the program goes on. Main thread.
class Dialogs : private NonCopyable {
 public:
    /// Receives the chosen file, or nothing when the user chose none. Never called within the call that opens
    /// the panel.
    using Chosen = std::function<void(std::optional<std::filesystem::path>)>;

    /// A kind of file of our own.
    struct FileType {
        std::string
            identifier;  ///< the name under which the bundle declares it to the system as a kind of JSON
    };
    struct SavePanel {
        std::string title;
        std::string suggestedName;
        FileType type;
    };
    struct OpenPanel {
        std::string title;
        std::string message;
        FileType type;
    };
    struct Alert {
        std::string title;
        std::string message;

        bool operator==(const Alert&) const = default;
    };

    struct Question {
        std::string title;
        std::string message;
        std::string confirm;  ///< the button that agrees
        std::string cancel;   ///< the button that disagrees; Escape presses it too

        bool operator==(const Question&) const = default;
    };
    /// Receives whether the user agreed. Never called within the call that asks.
    using Answered = std::function<void(bool)>;

    virtual ~Dialogs() = default;

    /// Asks where to save a file. When a file is there already, the user has agreed to replace it. The task
    /// is pending until the user answers; cancelling it drops the answer.
    [[nodiscard]] virtual Task chooseWhereToSave(const SavePanel& panel, Chosen chosen) = 0;

    /// Asks for one file to read, in the same way.
    [[nodiscard]] virtual Task chooseFileToOpen(const OpenPanel& panel, Chosen chosen) = 0;

    /// Tells the user that something went wrong. May return before the user has read it.
    virtual void alert(const Alert& alert) = 0;

    /// Asks before something that is hard to undo. The task is pending until the user answers; cancelling it
    /// drops the answer.
    [[nodiscard]] virtual Task ask(const Question& question, Answered answered) = 0;
};

}  // namespace velko
