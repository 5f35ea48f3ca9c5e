// varnel-screen's own words, translated by Qt's translation system (context
// "varnel::screen", apps/screen/translations); the engine's and the console's
// shared words come from their own tables.
#pragma once

#include <QCoreApplication>
#include <QString>

namespace varnel::screen {

inline QString Tr(const char* text) { return QCoreApplication::translate("varnel::screen", text); }

}  // namespace varnel::screen
