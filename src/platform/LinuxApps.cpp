#include "platform/LinuxApps.h"

#include <QHash>

namespace platform {
namespace {

using Row = LinuxApp;

// Choices worth knowing:
// - Chromium takes Chrome's identifier: the same pages, the same accessibility tree and the same
//   Gmail, so it gets the Chromium-family handling and Chrome's switches.
// - Text editors, terminals and password managers of the Linux desktop are products of their
//   own (each listed and switched by itself), not stand-ins for the catalogue's system ones.
// - Kate, like KWrite, is where KDE users write notes and documents: docs.
// - The mail clients whose reply window is readable (the reply box holds the quoted message
//   below the caret, the window the rest) draft replies as Mail does.
const std::vector<Row>& table() {
    static const std::vector<Row> rows{
        // Chat.
        {"com.tinyspeck.slackmacgap", {}, {"slack", "com.slack.Slack"}},
        {"com.microsoft.teams2",
         {},
         {"teams", "teams-for-linux", "com.github.IsmaelMartinez.teams_for_linux"}},
        {"net.whatsapp.WhatsApp",
         {},
         {"whatsapp", "whatsapp-for-linux", "whatsapp-desktop-linux", "whatsdesk",
          "com.github.eneshecan.WhatsAppForLinux", "com.rtosta.zapzap", "zapzap"}},
        {"ru.keepcoder.Telegram",
         {},
         {"org.telegram.desktop", "telegram-desktop", "telegramdesktop", "telegram"}},
        {"com.hnc.Discord", {}, {"discord", "com.discordapp.Discord", "vesktop"}},
        {"us.zoom.xos", {}, {"zoom", "us.zoom.Zoom"}},
        {"org.signal.Signal", "chat", {"signal-desktop", "signal"}},
        {"im.riot.Riot", "chat", {"element-desktop", "element"}},
        {"org.gnome.Fractal", "chat", {"fractal"}},
        {"org.gnome.Polari", "chat", {"polari"}},
        {"org.kde.neochat", "chat", {"neochat"}},
        {"org.kde.konversation", "chat", {"konversation"}},
        {"org.kde.kdeconnect.sms", "chat", {"kdeconnect-sms"}},
        {"im.pidgin.Pidgin", "chat", {"org.pidgin.Pidgin", "pidgin"}},
        {"io.github.Hexchat", "chat", {"hexchat"}},
        // Email.
        {"com.microsoft.Outlook", {}, {"outlook-for-linux"}},
        {"org.mozilla.Thunderbird", "email", {"net.thunderbird.Thunderbird", "thunderbird"}, true},
        {"org.gnome.Evolution", "email", {"evolution"}, true},
        {"org.gnome.Geary", "email", {"geary"}, true},
        {"org.kde.kmail2", "email", {"kmail", "kmail2"}},
        {"com.getmailspring.Mailspring", "email", {"mailspring"}},
        {"org.claws_mail.Claws-Mail", "email", {"claws-mail"}},
        {"eu.betterbird.Betterbird", "email", {"betterbird"}, true},
        // Docs and notes.
        {"notion.id", {}, {"notion", "notion-app", "notion-app-enhanced"}},
        {"md.obsidian", {}, {"md.obsidian.Obsidian", "obsidian"}},
        {"com.linear", {}, {"linear"}},
        {"org.gnome.TextEditor", "docs", {"gnome-text-editor"}},
        {"org.gnome.gedit", "docs", {"gedit"}},
        {"libreoffice-writer", "docs", {"org.libreoffice.LibreOffice.writer"}},
        {"libreoffice-impress", "docs", {"org.libreoffice.LibreOffice.impress"}},
        {"libreoffice-calc", "docs", {"org.libreoffice.LibreOffice.calc"}},
        {"org.libreoffice.LibreOffice",
         "docs",
         {"libreoffice-startcenter", "libreoffice", "soffice"}},
        {"org.kde.kwrite", "docs", {"kwrite"}},
        {"org.kde.kate", "docs", {"kate"}},
        {"org.xfce.mousepad", "docs", {"mousepad"}},
        {"org.x.editor", "docs", {"xed"}},
        {"pluma", "docs", {"org.mate.pluma"}},
        {"featherpad", "docs", {"org.tsujan.FeatherPad"}},
        {"com.abisource.AbiWord", "docs", {"abiword"}},
        {"org.onlyoffice.desktopeditors", "docs", {"onlyoffice-desktopeditors", "onlyoffice"}},
        {"org.gnome.gnote", "docs", {"gnote"}},
        {"org.gnome.Notes", "docs", {"bijiben"}},
        {"com.logseq.Logseq", "docs", {"logseq"}},
        {"net.cozic.joplin_desktop", "docs", {"joplin"}},
        // Browsers.
        {"com.google.Chrome",
         {},
         {"google-chrome", "google-chrome-stable", "org.chromium.Chromium", "chromium",
          "chromium-browser", "chromium-freeworld"}},
        {"com.google.Chrome.canary",
         {},
         {"google-chrome-unstable", "google-chrome-beta", "com.google.ChromeDev"}},
        {"com.brave.Browser", {}, {"brave-browser", "brave"}},
        {"com.microsoft.edgemac",
         {},
         {"com.microsoft.Edge", "microsoft-edge", "microsoft-edge-stable", "microsoft-edge-beta",
          "microsoft-edge-dev"}},
        {"com.vivaldi.Vivaldi", {}, {"vivaldi", "vivaldi-stable"}},
        {"com.operasoftware.Opera", {}, {"com.opera.Opera", "opera"}},
        {"org.mozilla.firefox",
         {},
         {"firefox", "firefox-esr", "firefox-developer-edition", "firefox_firefox"}},
        {"org.gnome.Epiphany", "browsers", {"epiphany"}},
        {"io.gitlab.librewolf-community", "browsers", {"librewolf"}},
        {"org.kde.falkon", "browsers", {"falkon"}},
        {"org.qutebrowser.qutebrowser", "browsers", {"qutebrowser"}},
        // AI chats.
        {"com.anthropic.claudefordesktop", {}, {"claude-desktop", "claude"}},
        {"com.openai.chat", {}, {"chatgpt"}},
        {"com.jeffser.Alpaca", "ai", {"alpaca"}},
        // Code and terminals.
        {"com.microsoft.VSCode",
         {},
         {"com.visualstudio.code", "code", "code-oss", "visual-studio-code", "com.vscodium.codium",
          "codium", "vscodium"}},
        {"com.todesktop.230313mzl4w4u92", {}, {"cursor"}},
        {"dev.zed.Zed", {}, {"zed"}},
        {"com.mitchellh.ghostty", {}, {"ghostty"}},
        {"dev.warp.Warp-Stable", {}, {"dev.warp.Warp", "warp", "warp-terminal"}},
        {"com.github.GitHubClient",
         {},
         {"io.github.shiftey.Desktop", "github-desktop", "github desktop"}},
        {"org.gnome.Terminal", "code", {"gnome-terminal", "gnome-terminal-server"}},
        {"org.gnome.Console", "code", {"kgx"}},
        {"org.kde.konsole", "code", {"konsole"}},
        {"org.kde.yakuake", "code", {"yakuake"}},
        {"kitty", "code", {}},
        {"Alacritty", "code", {"org.alacritty.Alacritty"}},
        {"org.wezfurlong.wezterm", "code", {"wezterm"}},
        {"xterm", "code", {"uxterm"}},
        {"xfce4-terminal", "code", {"org.xfce.terminal"}},
        {"com.gexperts.Tilix", "code", {"tilix"}},
        {"terminator", "code", {}},
        {"foot", "code", {}},
        {"lxterminal", "code", {}},
        {"mate-terminal", "code", {}},
        {"qterminal", "code", {}},
        {"urxvt", "code", {"rxvt-unicode"}},
        {"org.gnome.Builder", "code", {"gnome-builder"}},
        {"com.sublimetext.three", "code", {"sublime_text", "sublime-text"}},
        {"emacs", "code", {}},
        {"gvim", "code", {}},
        // Password managers.
        {"com.1password.1password", {}, {"1password"}},
        {"com.bitwarden.desktop", {}, {"bitwarden"}},
        {"org.keepassxc.KeePassXC", "passwords", {"keepassxc"}},
        {"keepass2", "passwords", {"keepass"}},
        {"org.gnome.seahorse.Application", "passwords", {"seahorse"}},
        {"org.gnome.World.Secrets", "passwords", {"secrets"}},
        {"org.kde.kwalletmanager5", "passwords", {"kwalletmanager5"}},
        {"me.proton.Pass", "passwords", {"proton-pass"}},
        {"enpass", "passwords", {}},
    };
    return rows;
}

// Every name (the row's identifier included), lower case, to its row.
const QHash<QString, const Row*>& byName() {
    static const QHash<QString, const Row*> index = [] {
        QHash<QString, const Row*> out;
        for (const Row& row : table()) {
            out.insert(row.app.toLower(), &row);
            for (const QString& name : row.names) out.insert(name.toLower(), &row);
        }
        return out;
    }();
    return index;
}

}  // namespace

const std::vector<LinuxApp>& linuxAppTable() {
    return table();
}

const LinuxApp* linuxAppNamed(const QString& name) {
    return byName().value(name.toLower(), nullptr);
}

QString appIdFor(const QStringList& names) {
    for (const QString& name : names) {
        if (const Row* row = linuxAppNamed(name)) return row->app;
    }
    for (const QString& name : names) {
        if (!name.isEmpty()) return name;
    }
    return {};
}

QStringList linuxNamesOf(const QString& app) {
    QStringList out{app};
    for (const Row& row : table()) {
        if (row.app.compare(app, Qt::CaseInsensitive) != 0) continue;
        if (!out.contains(row.app)) out << row.app;
        out << row.names;
    }
    return out;
}

}  // namespace platform
