#include "shell/Modes.h"

#include <cstdio>

#include "claude/Profile.h"
#include "platform/JsonDefaults.h"
#include "rules/AppRules.h"
#include "rules/RulesCheck.h"
#include "shell/SnapshotApps.h"
#include "shell/SnapshotSetup.h"
#include "shell/SnapshotUI.h"
#include "shell/TrayIcon.h"
#include "shell/TryItMode.h"

namespace shell {

std::optional<QString> flagValue(const QStringList& args, const QString& flag) {
    const qsizetype at = args.indexOf(flag, 1);
    if (at < 0 || at + 1 >= args.size()) return std::nullopt;
    return args.at(at + 1);
}

std::optional<Mode> headlessMode(const QStringList& args) {
    // The order of the checks is the order of precedence; the drawing modes sit between.
    if (args.indexOf(QStringLiteral("-printPrompt"), 1) > 0) return Mode::PrintPrompt;
    if (flagValue(args, QStringLiteral("-menuIcon")) ||
        flagValue(args, QStringLiteral("-snapshotUI")))
        return std::nullopt;
    if (args.indexOf(QStringLiteral("-rulesTest"), 1) > 0) return Mode::RulesTest;
    return std::nullopt;
}

namespace {

void printLine(const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
}

}  // namespace

int runHeadlessMode(Mode mode, const QStringList&) {
    switch (mode) {
        case Mode::PrintPrompt:
            printLine(claude::Profile(platform::JsonDefaults::saved()).prompt());
            break;
        case Mode::RulesTest:
            for (const QString& line :
                 rules::rulesCheck(rules::AppRules::shared(platform::JsonDefaults::saved())))
                printLine(line);
            break;
    }
    std::fflush(stdout);
    return 0;
}

std::optional<int> runGuiMode(const QStringList& args) {
    if (const auto path = flagValue(args, QStringLiteral("-menuIcon"))) {
        iconStrip().save(*path, "PNG");  // a failure still exits with 0
        return 0;
    }
    if (const auto folder = flagValue(args, QStringLiteral("-snapshotUI"))) {
        const int status = runSnapshotUI(*folder);
        snapshotAppsUI(*folder);
        return status;
    }
    if (args.indexOf(QStringLiteral("-tryIt"), 1) > 0) return runTryIt();
    if (const auto folder = flagValue(args, QStringLiteral("-snapshotSetup")))
        return runSnapshotSetup(*folder);
    return std::nullopt;
}

}  // namespace shell
