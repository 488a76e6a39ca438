#include "platform/linux/AppIds.h"

#include <utility>

namespace linuxdesk {

namespace {

struct Mapping {
    const char* catalogueId;
    QStringList names;  // lower case
};

// Choices worth knowing:
// - Chromium has no identifier of its own in the catalogue; it is the same browser as Chrome
//   (same pages, same accessibility tree, same Gmail), so it takes Chrome's identifier and with
//   it the Chromium-family behaviour and Chrome's switches.
// - Linux text editors stand for the system editor and terminals for the system terminal, so
//   the kinds (documents on, code off) treat them as their counterparts are treated.
// - Linux password managers without a catalogue entry take the generic "Passwords" identifier:
//   that keeps them in the locked kind, where Glimmo never reads a field.
const std::vector<Mapping>& table() {
    static const std::vector<Mapping> t = {
        {"com.tinyspeck.slackmacgap", {"slack", "com.slack.slack"}},
        {"com.google.Chrome",
         {"google-chrome", "google-chrome-stable", "com.google.chrome", "chromium",
          "chromium-browser", "org.chromium.chromium", "chromium-freeworld"}},
        {"com.google.Chrome.canary",
         {"google-chrome-unstable", "google-chrome-beta", "com.google.chromedev"}},
        {"com.brave.Browser", {"brave-browser", "brave", "com.brave.browser"}},
        {"com.microsoft.edgemac",
         {"microsoft-edge", "microsoft-edge-stable", "microsoft-edge-beta", "microsoft-edge-dev",
          "com.microsoft.edge"}},
        {"com.vivaldi.Vivaldi", {"vivaldi", "vivaldi-stable", "com.vivaldi.vivaldi"}},
        {"com.operasoftware.Opera", {"opera", "com.opera.opera"}},
        {"org.mozilla.firefox",
         {"firefox", "firefox-esr", "org.mozilla.firefox", "firefox-developer-edition",
          "firefox_firefox"}},
        {"com.hnc.Discord", {"discord", "com.discordapp.discord", "vesktop"}},
        {"ru.keepcoder.Telegram",
         {"telegram-desktop", "telegramdesktop", "org.telegram.desktop", "telegram"}},
        {"net.whatsapp.WhatsApp",
         {"whatsapp", "whatsapp-for-linux", "whatsapp-desktop-linux", "whatsdesk",
          "com.github.eneshecan.whatsappforlinux"}},
        {"us.zoom.xos", {"zoom", "us.zoom.zoom"}},
        {"com.microsoft.teams2",
         {"teams", "teams-for-linux", "com.github.ismaelmartinez.teams_for_linux"}},
        {"com.microsoft.Outlook", {"outlook-for-linux", "com.microsoft.outlook"}},
        {"com.microsoft.VSCode",
         {"code", "code-oss", "visual-studio-code", "com.visualstudio.code", "vscodium",
          "com.vscodium.codium", "codium"}},
        {"com.todesktop.230313mzl4w4u92", {"cursor"}},
        {"dev.zed.Zed", {"zed", "dev.zed.zed"}},
        {"com.mitchellh.ghostty", {"ghostty", "com.mitchellh.ghostty"}},
        {"dev.warp.Warp-Stable", {"warp", "warp-terminal", "dev.warp.warp"}},
        {"com.github.GitHubClient",
         {"github desktop", "github-desktop", "io.github.shiftey.desktop"}},
        {"md.obsidian", {"obsidian", "md.obsidian.obsidian"}},
        {"notion.id", {"notion", "notion-app", "notion-app-enhanced"}},
        {"com.linear", {"linear"}},
        {"com.anthropic.claudefordesktop", {"claude", "claude-desktop"}},
        {"com.openai.chat", {"chatgpt"}},
        {"com.1password.1password", {"1password"}},
        {"com.bitwarden.desktop", {"bitwarden", "com.bitwarden.desktop"}},
        {"com.apple.keychainaccess", {"seahorse", "org.gnome.seahorse.application"}},
        {"com.apple.Passwords",
         {"keepassxc", "org.keepassxc.keepassxc", "keepass2", "keepass", "enpass", "proton-pass"}},
        {"com.apple.TextEdit",
         {"gedit", "org.gnome.gedit", "gnome-text-editor", "org.gnome.texteditor", "kate",
          "org.kde.kate", "kwrite", "org.kde.kwrite", "mousepad", "org.xfce.mousepad", "xed",
          "pluma", "featherpad"}},
        {"com.apple.Terminal",
         {"gnome-terminal",
          "gnome-terminal-server",
          "org.gnome.terminal",
          "org.gnome.console",
          "kgx",
          "konsole",
          "org.kde.konsole",
          "xterm",
          "uxterm",
          "xfce4-terminal",
          "tilix",
          "com.gexperts.tilix",
          "alacritty",
          "kitty",
          "terminator",
          "urxvt",
          "wezterm",
          "org.wezfurlong.wezterm",
          "foot",
          "lxterminal",
          "mate-terminal",
          "qterminal"}},
    };
    return t;
}

}  // namespace

QString catalogueId(const QStringList& candidates) {
    for (const QString& c : candidates) {
        const QString key = c.toLower();
        if (key.isEmpty()) continue;
        for (const auto& m : table())
            if (m.names.contains(key)) return QString::fromLatin1(m.catalogueId);
    }
    return {};
}

QStringList linuxNamesOf(const QString& id) {
    for (const auto& m : table())
        if (id == QLatin1String(m.catalogueId)) return m.names;
    return {};
}

}  // namespace linuxdesk
