#include "rules/LinuxApps.h"

#include <utility>
#include <vector>

namespace rules {
namespace {

using Table = std::vector<std::pair<QString, QStringList>>;

const Table& table() {
    static const Table rows{
        {"chat", {"org.telegram.desktop",   "telegram-desktop",
                  "com.slack.Slack",        "slack",
                  "com.discordapp.Discord", "discord",
                  "org.signal.Signal",      "signal-desktop",
                  "im.riot.Riot",           "element-desktop",
                  "teams-for-linux",        "com.github.IsmaelMartinez.teams_for_linux",
                  "us.zoom.Zoom",           "zoom",
                  "com.rtosta.zapzap",      "org.gnome.Fractal",
                  "org.gnome.Polari",       "org.kde.neochat",
                  "org.pidgin.Pidgin",      "pidgin",
                  "io.github.Hexchat",      "hexchat"}},
        {"email",
         {"org.mozilla.Thunderbird", "net.thunderbird.Thunderbird", "thunderbird",
          "org.gnome.Evolution", "evolution", "org.gnome.Geary", "geary", "org.kde.kmail2", "kmail",
          "com.getmailspring.Mailspring", "mailspring", "org.claws_mail.Claws-Mail", "claws-mail",
          "eu.betterbird.Betterbird", "betterbird"}},
        {"docs",
         {"org.gnome.TextEditor",
          "gnome-text-editor",
          "org.gnome.gedit",
          "gedit",
          "libreoffice-writer",
          "libreoffice-impress",
          "libreoffice-calc",
          "org.libreoffice.LibreOffice",
          "libreoffice",
          "soffice",
          "org.kde.kwrite",
          "kwrite",
          "org.xfce.mousepad",
          "mousepad",
          "xed",
          "pluma",
          "com.abisource.AbiWord",
          "abiword",
          "org.onlyoffice.desktopeditors",
          "onlyoffice-desktopeditors",
          "md.obsidian.Obsidian",
          "obsidian",
          "notion-app",
          "org.gnome.gnote",
          "gnote",
          "org.gnome.Notes",
          "com.logseq.Logseq",
          "logseq",
          "net.cozic.joplin_desktop",
          "joplin"}},
        {"browsers",
         {"org.chromium.Chromium",
          "chromium",
          "chromium-browser",
          "google-chrome",
          "google-chrome-stable",
          "firefox",
          "firefox-esr",
          "org.gnome.Epiphany",
          "epiphany",
          "brave-browser",
          "com.microsoft.Edge",
          "microsoft-edge",
          "vivaldi-stable",
          "vivaldi",
          "com.opera.Opera",
          "opera",
          "io.gitlab.librewolf-community",
          "librewolf",
          "org.kde.falkon",
          "falkon",
          "org.qutebrowser.qutebrowser",
          "qutebrowser"}},
        {"ai", {"com.jeffser.Alpaca", "claude-desktop"}},
        {"code",
         {"org.gnome.Terminal",
          "gnome-terminal",
          "gnome-terminal-server",
          "org.gnome.Console",
          "kgx",
          "org.kde.konsole",
          "konsole",
          "kitty",
          "Alacritty",
          "org.wezfurlong.wezterm",
          "wezterm",
          "xterm",
          "xfce4-terminal",
          "com.gexperts.Tilix",
          "tilix",
          "terminator",
          "ghostty",
          "code",
          "code-oss",
          "com.visualstudio.code",
          "codium",
          "com.vscodium.codium",
          "cursor",
          "zed",
          "org.kde.kate",
          "kate",
          "org.gnome.Builder",
          "com.sublimetext.three",
          "sublime_text",
          "emacs",
          "gvim",
          "io.github.shiftey.Desktop",
          "github-desktop"}},
        {"passwords",
         {"org.keepassxc.KeePassXC", "keepassxc", "bitwarden", "org.gnome.seahorse.Application",
          "seahorse", "org.gnome.World.Secrets", "org.kde.kwalletmanager5", "kwalletmanager5",
          "1password", "me.proton.Pass", "proton-pass", "enpass"}},
    };
    return rows;
}

}  // namespace

std::optional<QString> linuxKindId(const QString& app) {
    for (const auto& [kindId, apps] : table()) {
        if (apps.contains(app, Qt::CaseInsensitive)) return kindId;
    }
    return std::nullopt;
}

QStringList linuxApps(const QString& kindId) {
    for (const auto& [id, apps] : table()) {
        if (id == kindId) return apps;
    }
    return {};
}

}  // namespace rules
