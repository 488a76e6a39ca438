#include "platform/linux/atspi/AxRoles.h"

#include <QStringList>

namespace linuxdesk {

namespace {

QString editableRole(AtspiRole role, const at::States& s);

}  // namespace

bool isTextRole(AtspiRole role) {
    switch (role) {
        case ATSPI_ROLE_ENTRY:
        case ATSPI_ROLE_TEXT:
        case ATSPI_ROLE_PARAGRAPH:
        case ATSPI_ROLE_SECTION:
        case ATSPI_ROLE_DOCUMENT_TEXT:
        case ATSPI_ROLE_DOCUMENT_FRAME:
        case ATSPI_ROLE_DOCUMENT_EMAIL:
        case ATSPI_ROLE_EDITBAR:
        case ATSPI_ROLE_AUTOCOMPLETE:
            return true;
        default:
            return false;
    }
}

namespace {

QString editableRole(AtspiRole role, const at::States& s) {
    if (s.multiLine) return QStringLiteral("AXTextArea");
    if (s.singleLine) return QStringLiteral("AXTextField");
    // Toolkits that state neither: entries are one line, documents and sections many.
    return role == ATSPI_ROLE_ENTRY || role == ATSPI_ROLE_AUTOCOMPLETE
               ? QStringLiteral("AXTextField")
               : QStringLiteral("AXTextArea");
}

}  // namespace

bool isWindowRole(AtspiRole role) {
    return role == ATSPI_ROLE_FRAME || role == ATSPI_ROLE_WINDOW || role == ATSPI_ROLE_DIALOG ||
           role == ATSPI_ROLE_ALERT || role == ATSPI_ROLE_FILE_CHOOSER;
}

QString axRole(AtspiRole role, const std::optional<at::States>& s, bool hasText) {
    switch (role) {
        case ATSPI_ROLE_PASSWORD_TEXT:
            return QStringLiteral("AXSecureTextField");
        case ATSPI_ROLE_DOCUMENT_WEB:
            return QStringLiteral("AXWebArea");
        case ATSPI_ROLE_LABEL:
        case ATSPI_ROLE_STATIC:
        case ATSPI_ROLE_CAPTION:
            return QStringLiteral("AXStaticText");
        case ATSPI_ROLE_APPLICATION:
            return QStringLiteral("AXApplication");
        case ATSPI_ROLE_PUSH_BUTTON:
        case ATSPI_ROLE_TOGGLE_BUTTON:
            return QStringLiteral("AXButton");
        case ATSPI_ROLE_LINK:
            return QStringLiteral("AXLink");
        case ATSPI_ROLE_COMBO_BOX:
            return s && s->editable && !s->readOnly ? QStringLiteral("AXComboBox")
                                                    : QStringLiteral("AXPopUpButton");
        default:
            break;
    }
    if (isWindowRole(role)) return QStringLiteral("AXWindow");
    if (isTextRole(role)) {
        if (s && s->editable && !s->readOnly && hasText) return editableRole(role, *s);
        return role == ATSPI_ROLE_ENTRY || role == ATSPI_ROLE_TEXT ? QStringLiteral("AXStaticText")
                                                                   : QStringLiteral("AXGroup");
    }
    return QStringLiteral("AXGroup");
}

std::optional<QString> axSubrole(AtspiRole role,
                                 const std::optional<std::map<QString, QString>>& attributes) {
    if (role == ATSPI_ROLE_PASSWORD_TEXT) return QStringLiteral("AXSecureTextField");
    if (!isTextRole(role)) return std::nullopt;
    // Browsers say what an input is for in its object attributes (the HTML input type and
    // the ARIA role); GTK and Qt have no search role of their own.
    if (!attributes) return std::nullopt;
    auto value = [&](const char* key) {
        auto it = attributes->find(QString::fromLatin1(key));
        return it == attributes->end() ? QString() : it->second.toLower();
    };
    if (value("text-input-type") == QLatin1String("search") ||
        value("xml-roles").split(' ').contains(QLatin1String("searchbox")) ||
        value("input-type") == QLatin1String("search"))
        return QStringLiteral("AXSearchField");
    if (value("text-input-type") == QLatin1String("password"))
        return QStringLiteral("AXSecureTextField");
    return std::nullopt;
}

}  // namespace linuxdesk
