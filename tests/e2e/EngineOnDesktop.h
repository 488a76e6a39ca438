#pragma once
// The engine's world on the real desktop: a temporary home with the claude stand-in and the
// debug trace on, and the Linux backend with in-memory settings.

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

#include "Standin.h"
#include "TempHome.h"
#include "platform/Clock.h"
#include "platform/Defaults.h"
#include "platform/linux/Desktop.h"

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
    linuxdesk::Desktop desktop;
};
