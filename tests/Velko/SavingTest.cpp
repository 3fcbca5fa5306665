#include <cerrno>
#include <utility>

#include "Velko/Flows/Preferences.h"
#include "Velko/Flows/Questions.h"
#include "tests/Dice.h"
#include "tests/Velko/VelkoOnMac.h"

namespace velko {
namespace {

using namespace std::chrono_literals;

/// Edits in bursts, some of which cannot be written, over a file that is spoilt and mended meanwhile. What
/// stands in the file is told a second time: an edit of the user's at once, what Velko notes five seconds
/// after the last, and nothing of its own over a file that cannot be read.
class SavingInAnyOrder : public VelkoOnMac, public testing::WithParamInterface<unsigned> {
 protected:
    using Uptime = MainThread::Uptime;

    void SetUp() override {
        for (const BundleID& app : apps) {
            launch(app, Section::bar);
        }
        files.rename = [this, rename = files.rename](const char* from, const char* to) {
            errno = ENOSPC;
            return isFull ? -1 : rename(from, to);
        };
        start();
        pass(10s);  // what is known of the apps is saved by then
        inFile = saved();
        ASSERT_EQ(inFile, values().layout);
    }

    /// Whatever there is to write goes to the file now.
    void written() {
        isLost = isFull;
        if (!isFull) {
            inFile = values().layout;
            pendingAt.reset();
            looksAround = std::exchange(isSpoilt, false);
        }
    }
    void noted() {
        if (!isSpoilt) {
            pendingAt = mac.mainThread.now() + 5s;
        }
    }
    /// The file is read again, and what had not been written is given up.
    void loaded() {
        velko->loadLayout();
        looksAround = !isSpoilt;
        pendingAt.reset();
        isLost = false;
        if (!isSpoilt) {
            EXPECT_EQ(values().layout, inFile);
        }
    }
    void clickIcon() {
        const BundleID app = dice.oneOf(apps);
        const Layout before = values().layout;
        velko->open(app);
        if (values().layout != before) {
            noted();
        }
    }

    void happen() {
        const BundleID app = dice.oneOf(apps);
        switch (dice.roll(11)) {
            case 0:
            case 1:
            case 2:
            case 3: clickIcon(); break;
            case 4:
                velko->place(app, dice.isOneIn(2) ? Section::bar : Section::tucked);
                written();
                break;
            case 5:
                velko->preferences().setSwitch(Switch::askAboutNewIcons, dice.isOneIn(2));
                written();
                break;
            case 6:
                velko->autopilot().dismiss(app);
                written();
                break;
            case 7:
            case 8: isFull = !isFull; break;
            case 9:
                write("spoilt");
                isSpoilt = true;
                loaded();
                break;
            default:
                ASSERT_TRUE(LayoutStore(file()).save(inFile));
                isSpoilt = false;
                loaded();
                break;
        }
    }
    void rest(std::chrono::milliseconds duration) {
        pass(duration);
        mac.closeMenu();
        if (std::exchange(looksAround, false)) {
            pass(10s);
            if (values().layout != inFile) {
                written();  // it has found apps that the layout did not know
                pendingAt.reset();
            }
        }
        if (pendingAt && mac.mainThread.now() >= *pendingAt) {
            written();
            pendingAt.reset();
        }
    }
    void check() {
        EXPECT_EQ(values().saveFailure.has_value(), isLost);
        EXPECT_EQ(values().problems.layoutUnreadable.has_value(), isSpoilt);
        if (isSpoilt) {
            EXPECT_EQ(contentOf(file()), "spoilt");
        } else {
            EXPECT_EQ(saved(), inFile);
        }
    }

    const std::vector<BundleID> apps{"app.a", "app.b", "app.c"};
    Dice dice{GetParam()};
    bool isFull = false;
    bool isSpoilt = false;
    bool isLost = false;       ///< the last attempt to write has failed
    bool looksAround = false;  ///< at the menu bar, with a layout that can be read again
    std::optional<Uptime> pendingAt;
    Layout inFile;
};

TEST_P(SavingInAnyOrder, WritesWhatItShouldWhenItShould) {
    for (int step = 0; step < 120 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step) + "\n" + std::string(log.lines().back()));
        happen();
        rest(1300ms * (1 + dice.roll(5)));
        check();
    }
    const bool isOwed = pendingAt || isLost;
    isFull = false;
    velko->quit();
    if (isOwed) {
        written();
    }
    EXPECT_EQ(isSpoilt ? contentOf(file()) == "spoilt" : saved() == inFile, true);
}

INSTANTIATE_TEST_SUITE_P(Seed, SavingInAnyOrder, testing::Range(1U, 9U));

}  // namespace
}  // namespace velko
