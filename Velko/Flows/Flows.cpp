#include "Velko/Flows/Flows.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

#include "Velko/Ports/Surfaces.h"

namespace velko {

void requireMainThread(const MainThread& thread) {
    if (!thread.isCurrent()) {
        std::fputs("Velko's controller was called off the main thread.\n", stderr);
        std::abort();
    }
}

Flows::Flows(FlowHost& host, const Platform& platform, const AppPorts& ports, const LayoutHistory& history,
             Log& log, Handlers handlers)
    : trust(host, platform, std::move(handlers.trustChanged)),
      scan(
          platform, [&host] { return host.values().items; }, std::move(handlers.scanned),
          [this] { trust.check(); }),
      autoTuck(host, platform, ports.surfaces.surface(Surfaces::Kind::shelf),
               [reveal = handlers.reveal] { reveal(RevealEvent::autoTuck()); }),
      showMe(host, platform, log),
      opening(host, platform, log, handlers.reveal),
      popOut(host, platform, log),
      changes(host, platform, trust, [this](const BundleID& bundleID) { popOut.begin(bundleID); }),
      liveActivity(host, platform, log),
      usage(host, platform, std::move(handlers.usageSampled)),
      autopilot(host, platform, log, [this](bool offered) { note.suggestionsChecked(offered); }),
      note(host, autopilot),
      newcomers(host, platform.mainThread, log, note),
      layoutChanges(host, platform.workspace, log,
                    {.popOut = popOut, .autopilot = autopilot, .replaced = handlers.layoutReplaced}),
      transfer(host, platform.workspace, ports.dialogs, log,
               [replaced = handlers.layoutReplaced] { replaced("import"); }),
      earlier(host, platform, history, log, [replaced = handlers.layoutReplaced] { replaced("restore"); }),
      presenting(host, platform, ports.surfaces, log,
                 {.showMe = showMe, .popOut = popOut, .reveal = handlers.reveal}),
      preferences(host, log, ports.loginItem,
                  {.popOut = popOut,
                   .liveActivity = liveActivity,
                   .autopilot = autopilot,
                   .presentingChanged =
                       [this] {
                           presenting.reconsider();
                           keys.takeAll();
                       },
                   .revealChanged = std::move(handlers.revealSettingsChanged),
                   .wideDisplaysChanged = std::move(handlers.wideDisplaysChanged)}),
      clicks(host, platform, trust,
             {.bar = std::move(handlers.clicks.bar),
              .pressed = std::move(handlers.clicks.pressed),
              .begun = std::move(handlers.clicks.begun),
              .recorded = [this](const BundleID& bundleID) { popOut.clicked(bundleID); }}),
      keys(host, ports.hotKeys, log, std::move(handlers.keyPressed)),
      frontMenus(host, platform),
      beat(platform) {}

void Flows::startBackgroundLoops() {
    trust.start(beat);
    usage.start(beat);
    autopilot.start(beat);
    changes.start(beat);
    liveActivity.start(beat);
    frontMenus.start();
    beat.start();
}

}  // namespace velko
