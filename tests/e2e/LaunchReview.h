#pragma once
// What the mail tests share: the message they answer, as saved from a mail client, the drafts
// the claude stand-in gives for it, the rewrite of a line typed below a draft, and the client's
// process.

#include <gtest/gtest.h>

#include <QByteArray>
#include <QProcess>
#include <QStringList>

#include "DesktopHelpers.h"
#include "Standin.h"
#include "overlay/Bubble.h"

namespace launchreview {

inline const QByteArray kMessage = R"(From: Ana Ruiz <ana@example.com>
To: Ben Okafor <ben@example.com>
Subject: Launch review
Date: Mon, 23 Nov 2026 09:12:00 +0000
Message-ID: <launch-review@example.com>
MIME-Version: 1.0
Content-Type: text/plain; charset=utf-8

Hi Ben,

Can we move the launch review to Thursday? The deck is not ready yet.
Could you send it tonight so I can read it first?

Ana
)";

inline const QStringList kDrafts{
    QStringLiteral("Sure, I'll send the deck by 9 tonight."),
    QStringLiteral("I'll send it first thing tomorrow."),
    QStringLiteral("Yes, Thursday works, sending it within the hour."),
};

// A mail client that ends with the test, killed if it still runs.
struct MailClient : QProcess {
    ~MailClient() override {
        if (state() == QProcess::NotRunning) return;
        kill();
        waitForFinished(5000);
    }
};

// For a test that found no mail client: a failure in CI, which must have it, else a skip. Call
// as `return missingMailClient("Evolution", "evolution");` from the test's body.
inline void missingMailClient(const char* name, const char* package) {
    if (qEnvironmentVariable("CI") == QLatin1String("true"))
        FAIL() << name << " is not installed (./run tests installs the " << package << " package)";
    GTEST_SKIP() << "MAIL TEST SKIPPED: " << name << " is not installed";
}

inline const QString kRewrite = QStringLiteral("Could you send me last week's numbers as well?");

// Types a line after the given keys, waits for its rewrite and takes it with Tab.
inline testing::AssertionResult takeRewriteOfATypedLine(const testsupport::TempHome& home,
                                                        const overlay::Shown& shown,
                                                        const QStringList& keys) {
    testsupport::setStandinScript(home, "answer " + kRewrite.toUtf8() + "\n");
    desktop::xdotool(QStringList{QStringLiteral("key")} + keys);
    desktop::xdotool({"type", "--delay", "20", "could you send me the numbers of last week too"});
    if (!testsupport::waitUntil(
            [&] {
                return shown.kind == overlay::Shown::Kind::Suggestion && shown.text == kRewrite;
            },
            30000))
        return testing::AssertionFailure() << "no rewrite was shown";
    desktop::xdotool({"key", "Tab"});
    desktop::settle();
    return testing::AssertionSuccess();
}

}  // namespace launchreview
