#include "shell/Modes.h"

#include <cstdio>

namespace shell {

std::optional<QString> flagValue(const QStringList& args, const QString& flag) {
    const qsizetype at = args.indexOf(flag, 1);
    if (at < 0 || at + 1 >= args.size()) return std::nullopt;
    return args.at(at + 1);
}

std::optional<Mode> headlessMode(const QStringList& args) {
    // The order of the checks is the order of precedence; the drawing modes sit between.
    if (args.indexOf(QStringLiteral("-printPrompt"), 1) > 0) return Mode::PrintPrompt;
    if (flagValue(args, QStringLiteral("-menuIcon")) || flagValue(args, QStringLiteral("-snapshotUI")))
        return std::nullopt;
    if (args.indexOf(QStringLiteral("-rulesTest"), 1) > 0) return Mode::RulesTest;
    return std::nullopt;
}

int runHeadlessMode(Mode mode, const QStringList&) {
    switch (mode) {
    case Mode::PrintPrompt:
    case Mode::RulesTest:
        std::fputs("not built yet\n", stderr);
        return 1;
    }
    return 1;
}

std::optional<int> runGuiMode(const QStringList&) { return std::nullopt; }

}  // namespace shell
