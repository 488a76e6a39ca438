#include "main/Constants.h"

namespace glimmo {

const QStringList& defaultPaused() {
    static const QStringList list{
        "com.anthropic.claudefordesktop", "com.apple.Terminal",        "com.googlecode.iterm2",
        "dev.warp.Warp-Stable",           "com.apple.dt.Xcode",        "com.microsoft.VSCode",
        "com.todesktop.230313mzl4w4u92",  "com.apple.keychainaccess",  "com.apple.Passwords",
        "com.1password.1password",        "com.agilebits.onepassword7"};
    return list;
}

const QStringList& replyApps() {
    static const QStringList list{"com.tinyspeck.slackmacgap", "com.microsoft.Outlook",
                                  "com.apple.mail"};
    return list;
}

const QStringList& chromiumBrowsers() {
    static const QStringList list{"com.google.Chrome",          "com.google.Chrome.canary",
                                  "com.brave.Browser",          "com.microsoft.edgemac",
                                  "company.thebrowser.Browser", "com.vivaldi.Vivaldi",
                                  "com.operasoftware.Opera",    "com.openai.atlas"};
    return list;
}

const QStringList& browsers() {
    static const QStringList list =
        chromiumBrowsers() +
        QStringList{"com.apple.Safari", "com.apple.SafariTechnologyPreview", "org.mozilla.firefox"};
    return list;
}

}  // namespace glimmo
