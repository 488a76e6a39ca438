#include <gtest/gtest.h>

#include <map>

#include "TempHome.h"
#include "claude/Profile.h"
#include "platform/Defaults.h"

namespace {

const QString company =
    QStringLiteral(" Norwell, an AI company for dental revenue cycle management.");

using Vars = std::map<const char*, const char*>;

// The locale variables for one test: these values, the others unset.
testsupport::ScopedEnv::Values locale(const Vars& values) {
    testsupport::ScopedEnv::Values all{
        {"LANGUAGE", {}}, {"LC_ALL", {}}, {"LC_MESSAGES", {}}, {"LANG", {}}};
    for (const auto& [name, value] : values) all[name] = QByteArray(value);
    return all;
}

TEST(Profile, WriterSentenceCases) {
    platform::MemoryDefaults d;
    claude::Profile p(d);
    EXPECT_EQ(p.about(), QStringLiteral("The writer works at") + company);

    p.setName("Alex");
    EXPECT_EQ(p.about(), QStringLiteral("Alex works at") + company);

    p.setName("");
    p.setRole("CTO");
    EXPECT_EQ(p.about(), QStringLiteral("The writer is CTO at") + company);

    p.setName("Alex");
    p.setRole("Head of Sales");
    p.setLanguage("Spanish");
    EXPECT_EQ(p.about(), QStringLiteral("Alex is Head of Sales at") + company +
                             " Their first language is Spanish; English is a second language.");

    p.setLanguage("ENGLISH");
    EXPECT_EQ(p.about(), QStringLiteral("Alex is Head of Sales at") + company);
    p.setLanguage("English (UK)");
    EXPECT_TRUE(
        p.about().endsWith(" Their first language is English (UK); English is a second language."));
}

TEST(Profile, NonStringValuesReadAsEmpty) {
    platform::MemoryDefaults d;
    d.setBool("name", true);
    d.setValue("role", 42);
    d.setStringList("language", {"German"});
    claude::Profile p(d);
    EXPECT_EQ(p.name(), "");
    EXPECT_EQ(p.about(), QStringLiteral("The writer works at") + company);
}

TEST(Profile, DefaultLanguageFromLocaleVariables) {
    const std::pair<Vars, const char*> cases[] = {
        {{{"LANGUAGE", "en_US:de_DE"}, {"LANG", "en_US.UTF-8"}}, "German"},
        {{}, "English"},
        {{{"LANG", "C.UTF-8"}, {"LC_MESSAGES", "POSIX"}}, "English"},
        // LANGUAGE comes first, then LC_ALL before LC_MESSAGES before LANG.
        {{{"LANGUAGE", "en-US:zh-Hans-CN"}, {"LC_ALL", "fr_FR.UTF-8"}}, "Chinese"},
        {{{"LC_ALL", "es_MX.UTF-8"}, {"LC_MESSAGES", "de_DE"}, {"LANG", "it_IT"}}, "Spanish"},
        {{{"LC_MESSAGES", "pt_BR@euro"}, {"LANG", "it_IT"}}, "Portuguese"},
    };
    for (const auto& [vars, language] : cases) {
        testsupport::ScopedEnv env(locale(vars));
        EXPECT_EQ(claude::defaultLanguage(), language) << language;
    }
}

}  // namespace
