#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "Velko/Ports/Desktop.h"
#include "Velko/Ports/Surfaces.h"
#include "Velko/View/Node.h"
#include "VelkoCore/Identifiers.h"
#include "VelkoCore/NonCopyable.h"
#include "VelkoEngine/Ports/Platform.h"

/// An imaginary Mac: just enough for Velko to make each of its trees on a real one, where nothing may be
/// hidden, asked or opened for that.
namespace velko::SelfCheck {

/// An app of the imaginary Mac, with one icon.
struct SampleApp {
    ProcessID pid = 0;
    BundleID bundleID;
    std::string name;
};

/// So many apps, with names of different lengths.
[[nodiscard]] std::vector<SampleApp> sampleApps(std::size_t count);

/// Ports that answer, and do nothing. Main thread.
class SampleMac final : private NonCopyable {
 public:
    /// `real` gives the time and the displays, and outlives this.
    SampleMac(const Platform& real, const std::vector<SampleApp>& apps, bool isTrusted);
    ~SampleMac();

    [[nodiscard]] Platform platform() const;
    [[nodiscard]] AppPorts appPorts() const;

    /// Clicks on Velko's icon.
    void click(bool isRight = false);
    /// The last menu that the icon showed.
    [[nodiscard]] const view::Menu& menu() const;
    /// The tree that a surface shows; null while it is closed.
    [[nodiscard]] const view::Node* tree(Surfaces::Kind kind) const;
    void close(Surfaces::Kind kind);

 private:
    struct Ports;

    Platform real_;
    std::unique_ptr<Ports> ports_;
};

}  // namespace velko::SelfCheck
