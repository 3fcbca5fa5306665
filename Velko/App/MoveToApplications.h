#pragma once

#include <filesystem>
#include <string>

#include "Velko/Ports/Desktop.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Task.h"

namespace velko {

class Log;

/// Moves the program to the Applications folder, because elsewhere the system may hide its icon: it puts a
/// copy there, opens the copy and ends. Nothing is deleted; what is in the way goes to the Trash. Main
/// thread.
class MoveToApplications final : private NonCopyable {
 public:
    static constexpr auto folder = "/Applications";

    /// `bundle` is where the program runs from.
    MoveToApplications(const AppPorts& ports, Log& log, std::filesystem::path bundle,
                       const std::filesystem::path& to = folder);

    /// Moves it. Asks first if there is a program of that name already.
    void start();

 private:
    void move(bool replaces);
    void opened(const Application::Outcome& outcome);
    void fail(const std::string& reason);

    AppPorts ports_;
    Log& log_;
    std::filesystem::path from_;
    std::filesystem::path to_;
    Task question_;
};

}  // namespace velko
