#include "varnel/qt/language.h"

#include <QCoreApplication>
#include <QDir>
#include <QTranslator>
#include <memory>
#include <vector>

#include "varnel/messages.h"

namespace varnel::qt {
namespace {

std::vector<std::unique_ptr<QTranslator>>& Installed() {
  static std::vector<std::unique_ptr<QTranslator>> translators;
  return translators;
}

}  // namespace

void SetLanguage(int32_t LangId) {
  SetThreadUILanguage(LangId);
  // Installing or removing a translator sends every widget a LanguageChange.
  bool announced = !Installed().empty();
  for (const auto& translator : Installed()) {
    QCoreApplication::removeTranslator(translator.get());
  }
  Installed().clear();
  if (GetThreadUILanguage() == 2052) {
    for (const QString& name : QDir(":/i18n").entryList({"*_zh_CN.qm"})) {
      auto translator = std::make_unique<QTranslator>();
      if (translator->load(":/i18n/" + name)) {
        QCoreApplication::installTranslator(translator.get());
        Installed().push_back(std::move(translator));
        announced = true;
      }
    }
  }
  if (!announced && QCoreApplication::instance() != nullptr) {
    QEvent change(QEvent::LanguageChange);  // the engine's texts changed all the same
    QCoreApplication::sendEvent(QCoreApplication::instance(), &change);
  }
}

}  // namespace varnel::qt
