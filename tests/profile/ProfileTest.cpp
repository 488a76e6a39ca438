#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "claude/Profile.h"
#include "platform/Defaults.h"

namespace {

const QString company =
    QStringLiteral(" Norwell, an AI company for dental revenue cycle management.");

using Vars = std::map<const char*, const char*>;

// Sets the locale variables for one test and puts the old values back afterwards.
class LocaleEnv {
public:
    explicit LocaleEnv(const Vars& values) {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LANG"}) {
            saved_[name] =
                qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt;
            qunsetenv(name);
        }
        for (const auto& [name, value] : values) qputenv(name, value);
    }
    ~LocaleEnv() {
        for (const auto& [name, value] : saved_) {
            if (value)
                qputenv(name, *value);
            else
                qunsetenv(name);
        }
    }

private:
    std::map<const char*, std::optional<QByteArray>> saved_;
};

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

    for (const char* english : {"english", "ENGLISH", "English"}) {
        p.setLanguage(english);
        EXPECT_EQ(p.about(), QStringLiteral("Alex is Head of Sales at") + company) << english;
    }
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

TEST(Profile, PromptPiecesAndFixedLength) {
    platform::MemoryDefaults d;
    claude::Profile p(d);
    const QString opening = QStringLiteral(
        "You help someone write, live, in any app on their Mac (Slack, email, LinkedIn, docs). ");
    const QString prompt = p.prompt();
    ASSERT_TRUE(prompt.startsWith(opening + p.about() + " They write to colleagues"));
    EXPECT_TRUE(prompt.endsWith("Output only a JSON array of the three replies as strings."));

    const QByteArray fixed = prompt.mid(opening.size() + p.about().size()).toUtf8();
    EXPECT_EQ(fixed.size(), 2102);
    EXPECT_EQ(fixed.count('\n'), 16);
    EXPECT_TRUE(fixed.contains("(\"are needing\", \"discussing about\", \"in next week\")"));
    EXPECT_TRUE(fixed.contains("Email: \"Hi <first name>,\" then two to four sentences"));
    EXPECT_EQ(fixed.count("\n\n"), 4);  // the four empty lines, no more
    EXPECT_TRUE(fixed.contains("<reply>.\n\n<text> holds"));

    // Built afresh: an edit shows in the next read.
    p.setName("Alex");
    EXPECT_TRUE(p.prompt().startsWith(opening + "Alex works at"));
}

TEST(Profile, DefaultLanguageFromLocaleVariables) {
    {
        LocaleEnv env(Vars{{"LANGUAGE", "en_US:de_DE"}, {"LANG", "en_US.UTF-8"}});
        EXPECT_EQ(claude::defaultLanguage(), "German");
    }
    {
        LocaleEnv env(Vars{{"LANG", "en_GB.UTF-8"}});
        EXPECT_EQ(claude::defaultLanguage(), "English");
    }
    {
        LocaleEnv env(Vars{});
        EXPECT_EQ(claude::defaultLanguage(), "English");
    }
    {
        LocaleEnv env(Vars{{"LANG", "C.UTF-8"}, {"LC_MESSAGES", "POSIX"}});
        EXPECT_EQ(claude::defaultLanguage(), "English");
    }
    {
        // LANGUAGE comes first, then LC_ALL before LC_MESSAGES before LANG.
        LocaleEnv env(Vars{{"LANGUAGE", "en-US:zh-Hans-CN"}, {"LC_ALL", "fr_FR.UTF-8"}});
        EXPECT_EQ(claude::defaultLanguage(), "Chinese");
    }
    {
        LocaleEnv env(Vars{{"LC_ALL", "es_MX.UTF-8"}, {"LC_MESSAGES", "de_DE"}, {"LANG", "it_IT"}});
        EXPECT_EQ(claude::defaultLanguage(), "Spanish");
    }
    {
        LocaleEnv env(Vars{{"LC_MESSAGES", "pt_BR@euro"}, {"LANG", "it_IT"}});
        EXPECT_EQ(claude::defaultLanguage(), "Portuguese");
    }
}

}  // namespace
