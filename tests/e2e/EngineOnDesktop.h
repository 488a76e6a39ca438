#pragma once
// The engine's world on the real desktop: a temporary home with the claude stand-in and the
// debug trace on, and the Linux backend with in-memory settings.

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QJsonDocument>
#include <QJsonObject>

#include "DesktopHelpers.h"
#include "Standin.h"
#include "TempHome.h"
#include "engine/Glimmo.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/linux/session/Desktop.h"
#include "rules/AppRules.h"

// Glimmo's name on the session bus, which the compositor companion answers alone: taken
// before the backend looks for the companion, as the program does.
struct GlimmosName {
    GlimmosName() {
        QDBusConnection::sessionBus().registerService(QStringLiteral("io.glimmo.Glimmo"));
    }
    ~GlimmosName() {
        QDBusConnection::sessionBus().unregisterService(QStringLiteral("io.glimmo.Glimmo"));
    }
};

struct EngineOnDesktop : ::testing::Test {
    EngineOnDesktop() {
        testsupport::useStandin(home);
        home.write(QStringLiteral(".local/share/Glimmo/debug.flag"), {});
    }
    QString log() const {
        return QString::fromUtf8(home.read(QStringLiteral(".local/share/Glimmo/log.txt")));
    }
    // The stand-in answers every request with these replies as the drafts' list.
    void answerWithDrafts(const QStringList& drafts) {
        QByteArrayList quoted;
        for (const QString& d : drafts) quoted << '"' + d.toUtf8() + '"';
        testsupport::setStandinScript(home, "answer [" + quoted.join(", ") + "]\n");
    }
    // The text of the last request the stand-in was sent.
    QString request() const {
        const QByteArray raw = testsupport::standinRecord(home, QStringLiteral("stdin")).trimmed();
        return QJsonDocument::fromJson(raw).object()["message"].toObject()["content"].toString();
    }

    testsupport::TempHome home;  // first: the paths below read the temporary HOME
    platform::MemoryDefaults defaults;
    platform::SystemClock clock;
    GlimmosName name;
    linuxdesk::Desktop desktop;
};

// The same with the engine on that backend, started by the test once the stand-in's script and
// the settings are in place.
struct EngineRunsOnDesktop : EngineOnDesktop {
    // The application in front as the engine sees it, and the log: for failure messages.
    std::string seen() const {
        return "front app: " +
               (engine.frontApp ? engine.frontApp->bundleId.toStdString() : std::string("none")) +
               "\n" + log().toStdString();
    }
    // Waits until the element focused in process pid holds text (blanks around it aside).
    ::testing::AssertionResult focusedHolds(qint64 pid, const QString& text) {
        const platform::Element box = desktop::focusedElement(platform.ax, pid);
        if (!box) return ::testing::AssertionFailure() << "nothing focused in " << pid;
        QString value;
        if (testsupport::waitUntil(
                [&] {
                    value = desktop::string(platform.ax, box, "AXValue");
                    return value.trimmed() == text;
                },
                5000))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << "the focused element holds " << value.toStdString();
    }
    bool suggests(const QString& text, int timeoutMs) {
        return testsupport::waitUntil(
            [&] {
                return engine.bubble->visible() && shown.kind == overlay::Shown::Kind::Suggestion &&
                       shown.text == text;
            },
            timeoutMs);
    }

    platform::Platform platform = desktop.platform(defaults, clock);
    rules::AppRules rules{defaults};
    engine::Glimmo engine{platform, rules};
    const overlay::Shown& shown = engine.bubble->shown();
};
