#pragma once
// The clickable label of a kind's header: the chevron (turned a quarter while the section is
// open), the kind's symbol and its title. A click anywhere on it opens or closes the section.

#include <QAbstractButton>

#include "rules/AppKind.h"

namespace setup {

class KindHeader : public QAbstractButton {
    Q_OBJECT

public:
    KindHeader(const rules::AppKind& kind, QWidget* parent = nullptr);

    // Where the title starts: rows under the header line up with it.
    static constexpr int titleIndent = 56;
    // Where the symbol starts: the "Every other app" grid lines up with it.
    static constexpr int symbolIndent = 23;

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString symbol_;
};

}  // namespace setup
