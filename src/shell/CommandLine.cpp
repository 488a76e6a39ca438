#include "shell/CommandLine.h"

#include <cstdio>

#include "main/Version.h"
#include "shell/Modes.h"

namespace shell {

namespace {

void print(FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream);
    std::fflush(stream);
}

// The single-dash flags whose next argument is their value, not an option of its own.
const QStringList& valueFlags() {
    static const QStringList flags{QStringLiteral("-menuIcon"), QStringLiteral("-snapshotUI"),
                                   QStringLiteral("-snapshotSetup")};
    return flags;
}

}  // namespace

QString usage() {
    return QStringLiteral(
        "Usage: glimmo [flag]\n"
        "\n"
        "Without a flag Glimmo starts in the system tray (or reopens the running one).\n"
        "\n"
        "  -setup                 open the setup window even when setup is finished\n"
        "  -stay                  run from where it is, without installing itself\n"
        "  -printPrompt           print the system prompt sent to Claude and exit\n"
        "  -menuIcon FILE         draw both states of the tray icon into a PNG and exit\n"
        "  -snapshotUI FOLDER     render the bubble, reply list, setup and apps windows and exit\n"
        "  -rulesTest             print the rules' decisions for fixed samples and exit\n"
        "                         (leaves two of the saved switches changed)\n"
        "  -tryIt                 open the sample text in the text editor and exit\n"
        "  -snapshotSetup FOLDER  render the apps window and the setup steps and exit\n"
        "  -h, --help             print this help and exit\n"
        "  --version              print the version and build number and exit\n");
}

std::optional<int> answerOptions(const QStringList& args) {
    for (qsizetype i = 1; i < args.size(); ++i) {
        const QString& arg = args.at(i);
        if (valueFlags().contains(arg)) {
            ++i;
            continue;
        }
        if (arg == QStringLiteral("--help") || arg == QStringLiteral("-h")) {
            print(stdout, usage());
            return 0;
        }
        if (arg == QStringLiteral("--version")) {
            print(stdout, QStringLiteral("Glimmo %1 (build %2)\n")
                              .arg(QLatin1String(glimmo::version))
                              .arg(glimmo::build));
            return 0;
        }
        if (arg.startsWith(QStringLiteral("--"))) {
            print(stderr, QStringLiteral("glimmo: unknown option %1\n\n").arg(arg) + usage());
            return 2;
        }
    }
    return std::nullopt;
}

bool drawsOnly(const QStringList& args) {
    return flagValue(args, QStringLiteral("-menuIcon")) ||
           flagValue(args, QStringLiteral("-snapshotUI")) ||
           flagValue(args, QStringLiteral("-snapshotSetup"));
}

std::optional<int> checkDisplay(const QStringList& args) {
    if (qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
        qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || drawsOnly(args))
        return std::nullopt;
    print(stderr, QStringLiteral("glimmo: no display (DISPLAY and WAYLAND_DISPLAY are not set); "
                                 "start Glimmo from your desktop session, or set DISPLAY\n"));
    return 1;
}

}  // namespace shell
