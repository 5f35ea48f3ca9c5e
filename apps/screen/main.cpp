// varnel-screen: the data-entry window. With no arguments it opens the sample
// database (created on first run); --connect with --table or --view opens
// anything else; --screenshot FILE.png renders the loaded window and exits.
#include <QApplication>
#include <QInputDialog>
#include <QMessageBox>
#include <iostream>
#include <optional>

#include "main_window.h"
#include "options.h"
#include "screen_setup.h"
#include "screen_texts.h"
#include "session.h"
#include "varnel/qt/language.h"
#include "varnel/qt/load_progress_dialog.h"
#include "varnel/qt/message_dialogs.h"

namespace varnel::screen {
namespace {

// The password typed into a prompt that says why it is asked; nullopt when cancelled.
std::optional<std::string> AskPassword(const QString& reason) {
  bool given = false;
  const QString label = reason.isEmpty() ? Tr("Password:") : reason + "\n\n" + Tr("Password:");
  const QString password = QInputDialog::getText(nullptr, "varnel-screen", label,
                                                 QLineEdit::Password, QString(), &given);
  return given ? std::optional<std::string>(password.toStdString()) : std::nullopt;
}

// Opens the connection; --password asks for the password first. A database
// that refuses a connection made without one (its number says the database
// refused, whatever its words) is offered one from a prompt that shows why.
std::shared_ptr<db::Connection> Connect(const app::Options& options,
                                        const std::string& connection_string, bool can_ask) {
  auto connection = std::make_shared<db::Connection>();
  const std::string password =
      options.ask_password && can_ask ? AskPassword(QString()).value_or("") : "";
  try {
    connection->Open(connection_string, "", password);
  } catch (const VbError& error) {
    if (!can_ask || !password.empty() || error.Number() != Err_Provider) {
      throw;
    }
    const std::optional<std::string> retry =
        AskPassword(QString::fromStdString(error.Description()));
    if (!retry) {
      throw;
    }
    connection->Open(connection_string, "", *retry);
  }
  return connection;
}

int Run(const app::Options& options) {
  const std::string connection_string = app::ResolveConnection(options, std::cout);
  const bool shooting = !options.screenshot.empty();
  auto connection = Connect(options, connection_string, !shooting);
  Session session(options, connection);
  MainWindow window(session.Recordset());
  window.SetWriter(&session.Writer());
  window.SetScreenNames(session.Names());
  qt::LoadProgressDialog progress(session.Recordset(), *connection, &window);
  window.show();
  session.Recordset().InitDataSource();
  if (shooting) {
    QApplication::processEvents();
    return window.SaveScreenshot(QString::fromStdString(options.screenshot.string())) ? 0 : 1;
  }
  return QApplication::exec();
}

}  // namespace
}  // namespace varnel::screen

int main(int argc, char** argv) {
  using namespace varnel;
  int exit_code = 0;
  const std::optional<app::Options> options =
      app::ParseOptions(argc, argv, &exit_code, app::Program::kWindow);
  if (!options) {
    return exit_code;
  }
  if (!options->screenshot.empty() && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
      qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    qputenv("QT_QPA_PLATFORM", "offscreen");  // a screenshot needs no display
  }
  QApplication app(argc, argv);
  QApplication::setApplicationName("varnel-screen");
  qt::SetLanguage(options->language);
  const auto dialogs = qt::InstallMessageDialogs();
  try {
    return screen::Run(*options);
  } catch (const VbError& error) {
    std::cerr << "varnel-screen: " << error.Description() << "\n";
  } catch (const std::exception& error) {
    std::cerr << "varnel-screen: " << error.what() << "\n";
  }
  return 1;
}
