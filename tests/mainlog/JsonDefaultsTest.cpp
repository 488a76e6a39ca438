#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "TempHome.h"
#include "main/Paths.h"
#include "platform/JsonDefaults.h"

namespace {

using platform::JsonDefaults;

QJsonObject fileObject(const testsupport::TempHome& home) {
    QJsonParseError error{};
    const QJsonDocument doc =
        QJsonDocument::fromJson(home.read(".config/Glimmo/defaults.json"), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError);
    return doc.object();
}

TEST(JsonDefaults, TypesKeptAcrossRestarts) {
    testsupport::TempHome home;
    {
        JsonDefaults d(JsonDefaults::standardPath());
        EXPECT_FALSE(d.value("name"));
        d.setString("name", "Alex");
        d.setBool("otherOn", false);
        d.setStringList("paused", {"com.apple.Terminal"});
        d.setBoolMap("kindOn", {{"chat", false}, {"ai", true}});
        d.setString("empty", "");
        d.remove("empty");
    }
    JsonDefaults d(JsonDefaults::standardPath());
    EXPECT_EQ(d.string("name"), "Alex");
    EXPECT_EQ(d.boolValue("otherOn"), false);
    EXPECT_EQ(d.stringList("paused"), QStringList{"com.apple.Terminal"});
    EXPECT_EQ(d.boolMap("kindOn"), (platform::BoolMap{{"chat", false}, {"ai", true}}));
    EXPECT_FALSE(d.value("empty"));
    // A value of another type reads as absent through the typed getters.
    EXPECT_FALSE(d.boolValue("name"));

    const QJsonObject object = fileObject(home);
    EXPECT_TRUE(object.value("otherOn").isBool());
    EXPECT_TRUE(object.value("paused").isArray());
    EXPECT_TRUE(object.value("kindOn").toObject().value("chat").isBool());
}

TEST(JsonDefaults, EveryWriteLeavesOneValidFile) {
    testsupport::TempHome home;
    JsonDefaults d(JsonDefaults::standardPath());
    for (int i = 0; i < 50; ++i) {
        d.setString(QStringLiteral("k%1").arg(i % 5), QString(i * 10, QLatin1Char('y')));
        ASSERT_EQ(fileObject(home).value(QStringLiteral("k%1").arg(i % 5)).toString().size(),
                  i * 10);
    }
    // No temporary files left beside it.
    EXPECT_EQ(QDir(glimmo::configDir()).entryList(QDir::Files | QDir::Hidden),
              QStringList{"defaults.json"});
}

TEST(JsonDefaults, CorruptFileIsKeptAside) {
    for (const QByteArray& bad : {QByteArray("{\"name\": \"Al"), QByteArray("[true]")}) {
        testsupport::TempHome home;
        QDir().mkpath(glimmo::supportDir());
        home.write(".config/Glimmo/defaults.json", bad);

        JsonDefaults d(JsonDefaults::standardPath());
        EXPECT_FALSE(d.value("name"));
        const QStringList aside =
            QDir(glimmo::configDir()).entryList({"defaults.json.unreadable*"}, QDir::Files);
        ASSERT_EQ(aside.size(), 1) << bad.toStdString();
        EXPECT_EQ(home.read(".config/Glimmo/" + aside[0]), bad);

        const QString log = QString::fromUtf8(home.read(".local/share/Glimmo/log.txt"));
        EXPECT_TRUE(log.contains(aside[0])) << log.toStdString();
        EXPECT_EQ(log.count('\n'), 1);

        // The next write starts a fresh file and leaves the kept one alone.
        d.setBool("enabled", true);
        EXPECT_EQ(fileObject(home), QJsonObject({{"enabled", true}}));
        EXPECT_EQ(home.read(".config/Glimmo/" + aside[0]), bad);
    }
}

}  // namespace
