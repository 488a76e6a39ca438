#include "rules/RulesCheck.h"

#include <optional>

namespace rules {
namespace {

const QString chrome = QStringLiteral("com.google.Chrome");
const QString gmail = QStringLiteral("mail.google.com");
const QString chatgpt = QStringLiteral("chatgpt.com");
const QString linkedin = QStringLiteral("www.linkedin.com");

struct Sample {
    QString label;
    QString app;
    std::optional<QString> host;
};

Sample inChrome(const QString& host) {
    return {QStringLiteral("Chrome · ") + host, chrome, host};
}

QString onOff(bool on) {
    return on ? QStringLiteral("on") : QStringLiteral("off");
}

}  // namespace

QStringList rulesCheck(AppRules& rules) {
    const std::vector<Sample> samples{
        {QStringLiteral("Slack"), QStringLiteral("com.tinyspeck.slackmacgap"), std::nullopt},
        {QStringLiteral("Terminal"), QStringLiteral("com.apple.Terminal"), std::nullopt},
        {QStringLiteral("Claude app"), QStringLiteral("com.anthropic.claudefordesktop"),
         std::nullopt},
        {QStringLiteral("1Password"), QStringLiteral("com.1password.1password"), std::nullopt},
        {QStringLiteral("Figma (other app)"), QStringLiteral("com.figma.Desktop"), std::nullopt},
        inChrome(gmail),
        inChrome(chatgpt),
        inChrome(linkedin),
        {QStringLiteral("Safari · claude.ai"), QStringLiteral("com.apple.Safari"),
         QStringLiteral("claude.ai")},
    };
    QStringList lines;
    for (const Sample& s : samples)
        lines << onOff(rules.isOn(s.app, s.host)).leftJustified(3) + QLatin1Char(' ') + s.label;

    rules.setApp(chrome, false);
    lines << QStringLiteral("after Chrome off: linkedin ") + onOff(rules.isOn(chrome, linkedin)) +
                 QStringLiteral(" gmail ") + onOff(rules.isOn(chrome, gmail));

    rules.setSite(chatgpt, true);
    lines << QStringLiteral("after ") + chatgpt + QStringLiteral(" on: ") +
                 onOff(rules.isOn(chrome, chatgpt));

    rules.setApp(chrome, true);
    rules.setSite(chatgpt, false);
    const bool restored = !rules.appOn().count(chrome) && !rules.siteOn().count(chatgpt);
    lines << QStringLiteral("restored: ") +
                 (restored ? QStringLiteral("yes") : QStringLiteral("no"));
    return lines;
}

}  // namespace rules
