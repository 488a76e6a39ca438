#pragma once
// The rules check of the "-rulesTest" mode: the decisions for fixed samples, then a few switches
// and their effect, as lines of text. It changes the rules it is given: at the end Chrome's
// switch is left on and the ChatGPT site's switch off.

#include <QStringList>

#include "rules/AppRules.h"

namespace rules {

QStringList rulesCheck(AppRules& rules);

}  // namespace rules
