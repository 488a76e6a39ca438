#pragma once
// "About you": the name, role and first language that make the rewrites sound like the user.

#include <QDialog>

#include "platform/Defaults.h"

class QLineEdit;

namespace shell {

class ProfileDialog : public QDialog {
    Q_OBJECT
public:
    explicit ProfileDialog(platform::Defaults& defaults, QWidget* parent = nullptr);

    // Stores the three fields, trimmed; an empty field is stored as an empty string.
    void save();

    QLineEdit* nameField() const { return name_; }
    QLineEdit* roleField() const { return role_; }
    QLineEdit* languageField() const { return language_; }

private:
    platform::Defaults& defaults_;
    QLineEdit* name_;
    QLineEdit* role_;
    QLineEdit* language_;
};

}  // namespace shell
