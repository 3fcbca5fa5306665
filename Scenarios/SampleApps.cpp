#include "Scenarios/SampleApps.h"

#include <algorithm>
#include <array>

namespace velko::scenarios {

std::span<const SampleApp> sampleApps() {
    static constexpr auto apps = std::to_array<SampleApp>({
        {"com.tinyspeck.slackmacgap", "Slack", Section::bar, 24},
        {"com.1password.1password", "1Password", Section::bar, 22},
        {"com.getdropbox.dropbox", "Dropbox", Section::tucked, 24},
        {"com.google.drivefs", "Google Drive", Section::tucked, 24},
        {"com.microsoft.OneDrive", "OneDrive", Section::tucked, 26},
        {"com.spotify.client", "Spotify", Section::tucked, 22},
        {"com.docker.docker", "Docker", Section::tucked, 28},
        {"us.zoom.xos", "Zoom", Section::bar, 24},
        {"com.microsoft.teams2", "Teams", Section::tucked, 24},
        {"net.whatsapp.WhatsApp", "WhatsApp", Section::tucked, 24},
        {"com.hnc.Discord", "Discord", Section::tucked, 24},
        {"com.tailscale.ipn.macos", "Tailscale", Section::bar, 22},
        {"com.raycast.macos", "Raycast", Section::tucked, 22},
        {"com.figma.agent", "Figma", Section::buried, 22},
        {"com.adobe.acc.AdobeCreativeCloud", "Creative Cloud", Section::buried, 26},
        {"com.logi.ghub", "G HUB", Section::buried, 24},
        {"com.logi.optionsplus", "Options+", Section::buried, 24},
        {"com.nordvpn.macos", "NordVPN", Section::tucked, 24},
        {"com.backblaze.bzbmenu", "Backblaze", Section::buried, 24},
        {"com.crashplan.desktop", "CrashPlan", Section::buried, 24},
        {"com.culturedcode.ThingsMac", "Things", Section::bar, 22},
        {"com.flexibits.fantastical2.mac", "Fantastical", Section::bar, 30},
        {"com.toggl.daneel", "Toggl Track", Section::tucked, 58},
        {"com.obsproject.obs-studio", "OBS", Section::buried, 24},
        {"com.github.GitHubClient", "GitHub", Section::tucked, 22},
        {"com.postmanlabs.mac", "Postman", Section::buried, 24},
        {"com.elgato.StreamDeck", "Stream Deck", Section::tucked, 24},
        {"com.sonos.macController2", "Sonos", Section::buried, 24},
        {"com.grammarly.ProjectLlama", "Grammarly", Section::tucked, 24},
        {"com.todoist.mac.Todoist", "Todoist", Section::tucked, 22},
    });
    return apps;
}

const SampleApp& latecomer() {
    static constexpr SampleApp app{"com.linear", "Linear", Section::tucked, 22};
    return app;
}

SimulatedApp appOf(const SampleApp& sample) {
    return {.bundleID = sample.bundleID,
            .name = sample.name,
            .icons = {{.title = sample.name, .width = sample.iconWidth}}};
}

const SampleApp* sampleAppWith(std::string_view bundleID) {
    const auto sample = std::ranges::find(sampleApps(), bundleID, &SampleApp::bundleID);
    if (sample != sampleApps().end()) {
        return &*sample;
    }
    return bundleID == latecomer().bundleID ? &latecomer() : nullptr;
}

std::string nameOf(std::string_view bundleID) {
    if (const auto* sample = sampleAppWith(bundleID)) {
        return sample->name;
    }
    const auto last = bundleID.substr(bundleID.rfind('.') + 1);
    return std::string(last.empty() ? bundleID : last);
}

std::optional<BundleID> bundleIDOf(std::string_view app) {
    if (app == latecomer().name) {
        return latecomer().bundleID;
    }
    const auto sample = std::ranges::find(sampleApps(), app, &SampleApp::name);
    if (sample != sampleApps().end()) {
        return sample->bundleID;
    }
    return app.contains('.') ? std::optional<BundleID>(app) : std::nullopt;
}

Layout firstLayout() {
    Layout layout;
    for (const SampleApp& sample : sampleApps()) {
        layout.place(sample.bundleID, sample.section);
    }
    layout.place(latecomer().bundleID, latecomer().section);
    layout.hasCompletedSetup = true;
    return layout;
}

}  // namespace velko::scenarios
