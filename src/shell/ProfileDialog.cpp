#include "shell/ProfileDialog.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace shell {

namespace {

constexpr int kFieldWidth = 260;

QLineEdit* addField(QVBoxLayout* layout, const QString& label, const QString& text,
                    const QString& placeholder) {
    auto* caption = new QLabel(label);
    QFont small = caption->font();
    small.setPointSize(small.pointSize() - 1 > 8 ? small.pointSize() - 1 : small.pointSize());
    caption->setFont(small);
    caption->setForegroundRole(QPalette::PlaceholderText);
    auto* field = new QLineEdit(text);
    field->setPlaceholderText(placeholder);
    field->setFixedWidth(kFieldWidth);
    layout->addSpacing(4);
    layout->addWidget(caption);
    layout->addWidget(field);
    return field;
}

}  // namespace

ProfileDialog::ProfileDialog(platform::Defaults& defaults, QWidget* parent)
    : QDialog(parent), defaults_(defaults) {
    setWindowTitle(QStringLiteral("About you"));
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(6);
    layout->setContentsMargins(20, 18, 20, 16);

    auto* message = new QLabel(QStringLiteral("About you"));
    QFont bold = message->font();
    bold.setBold(true);
    message->setFont(bold);
    layout->addWidget(message);
    auto* info = new QLabel(QStringLiteral("Used only to make the rewrites sound like you."));
    layout->addWidget(info);
    layout->addSpacing(6);

    const auto saved = [&defaults](const char* key) {
        return defaults.string(QLatin1String(key)).value_or(QString());
    };
    name_ = addField(layout, QStringLiteral("Name"), saved("name"), QStringLiteral("Alex"));
    role_ = addField(layout, QStringLiteral("Role"), saved("role"),
                     QStringLiteral("an account executive"));
    language_ = addField(layout, QStringLiteral("First language"), saved("language"),
                         QStringLiteral("English"));

    auto* buttons = new QDialogButtonBox;
    QPushButton* saveButton =
        buttons->addButton(QStringLiteral("Save"), QDialogButtonBox::AcceptRole);
    buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    saveButton->setDefault(true);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    layout->addSpacing(10);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    name_->setFocus();
}

void ProfileDialog::save() {
    defaults_.setString(QStringLiteral("name"), name_->text().trimmed());
    defaults_.setString(QStringLiteral("role"), role_->text().trimmed());
    defaults_.setString(QStringLiteral("language"), language_->text().trimmed());
}

}  // namespace shell
