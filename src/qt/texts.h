// The binding's own words, translated by Qt's translation system (context
// "varnel::qt"); the engine's words come from its string table (LoadResString).
#pragma once

#include <QCoreApplication>
#include <QString>

namespace varnel::qt::detail {

inline QString Tr(const char* text) { return QCoreApplication::translate("varnel::qt", text); }

}  // namespace varnel::qt::detail
