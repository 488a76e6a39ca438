#pragma once
// The engine on the in-memory desktop, with the real claude exchange talking to the scripted
// stand-in and the real bubble (offscreen). Time for the engine's pauses is moved by hand;
// the delayed actions (paste settle, clipboard restore) run on real timers.

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>
#include <memory>

#include "Standin.h"
#include "TempHome.h"
#include "engine/Glimmo.h"
#include "platform/fake/Desktop.h"
#include "rules/AppRules.h"

class EngineTest : public ::testing::Test {
protected:
    EngineTest() {
        testsupport::useStandin(home);
        home.write(QStringLiteral(".local/share/Glimmo/debug.flag"), {});
        rules = std::make_unique<rules::AppRules>(desk.defaults());
        engine = std::make_unique<engine::Glimmo>(desk.platform(), *rules);
    }
    ~EngineTest() override { engine.reset(); }

    void tick() { engine->tick(); }
    // Lets seconds pass on the engine's clock, then ticks.
    void after(double seconds) {
        desk.clock().advance(seconds);
        engine->tick();
    }
    // Ticks once (the engine sees the field), then again after seconds.
    void paused(double seconds) {
        tick();
        after(seconds);
    }
    bool waitFor(const std::function<bool()>& condition, int ms = 5000) {
        return testsupport::waitUntil(condition, ms);
    }
    // Lets real time pass with the event loop running (for the engine's delayed actions).
    void spin(int ms) {
        testsupport::waitUntil([] { return false; }, ms);
    }

    void script(const QByteArray& lines) { testsupport::setStandinScript(home, lines); }
    // The body of the last request the stand-in received, or empty.
    QString lastRequest() {
        const QByteArray raw = testsupport::standinRecord(home, QStringLiteral("stdin")).trimmed();
        if (raw.isEmpty()) return {};
        return QJsonDocument::fromJson(raw).object()["message"].toObject()["content"].toString();
    }
    void forgetLastRequest() { home.write(QStringLiteral("standin/stdin"), {}); }
    // Types text as the user would and lets the engine see it.
    void type(const QString& text) {
        desk.type(text);
        tick();
    }
    QString log() {
        return QString::fromUtf8(home.read(QStringLiteral(".local/share/Glimmo/log.txt")));
    }
    // Shows a cached rewrite of the paragraph before the caret, as after a pause, with no key
    // posted yet.
    void showCached(const QString& paragraph, const QString& rewrite) {
        engine->cache.insert(paragraph, rewrite);
        tick();
        after(1.0);
        ASSERT_TRUE(engine->shown);
        desk.keyboard().clearPosted();
    }
    const overlay::Shown& bubble() { return engine->bubble->shown(); }

    testsupport::TempHome home;  // first: every path below it reads the temporary HOME
    fake::Desktop desk;
    std::unique_ptr<rules::AppRules> rules;
    std::unique_ptr<engine::Glimmo> engine;
};
