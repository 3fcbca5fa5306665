#include "VelkoEngine/Hiding/EngineProbe.h"

#include "VelkoEngine/Hiding/VKAssessment.h"

namespace velko {

std::string engineProbeReport(const Platform& platform) {
    const auto report = VKAssessment::probeReport(platform);
    std::string text = report.loaded ? "loaded: true" : "loaded: false";
    if (report.loadError && !report.loadError->empty()) {
        text += "\nerror: " + *report.loadError;
    }
    for (const auto& check : report.checks) {
        text += (check.ok ? "\nOK   " : "\nFAIL ") + check.name;
    }
    return text;
}

}  // namespace velko
