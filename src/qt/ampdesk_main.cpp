// ampdesk: the desktop panel.
#include <QApplication>
#include <QStringList>
#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "qt/desktop_app.h"
#include "qt/stop_signals.h"

int main(int argc, char** argv) {
  // --help needs no display.
  for (int i = 1; i < argc; ++i) {
    const std::string a = argv[i];
    if (a == "--help" || a == "-h") {
      std::printf("%s", amp::DesktopUsage().c_str());
      return 0;
    }
  }

  QApplication app(argc, argv);
  QApplication::setApplicationName("AmpDesk");
  QApplication::setStyle("Fusion");
  std::signal(SIGPIPE, SIG_IGN);

  // Qt has taken its own options (-platform, -style, ...) out of argv.
  std::vector<std::string> args;
  const QStringList qargs = QApplication::arguments();
  for (qsizetype i = 1; i < qargs.size(); ++i) args.push_back(qargs[i].toStdString());
  amp::DesktopOptions options;
  if (const std::string err = amp::ParseDesktopOptions(args, options); !err.empty()) {
    std::fprintf(stderr, "ampdesk: %s\nTry 'ampdesk --help'.\n", err.c_str());
    return 2;
  }

  amp::DesktopApp desktop(options);
  std::string error;
  if (!desktop.Start(&error)) {
    std::fprintf(stderr, "ampdesk: %s\n", error.c_str());
    return desktop.StartFailureCode();
  }
  // A stop from outside ends the session as closing the window does (the
  // settings saved, the line closed), and the demo's unit goes with us.
  amp::StopSignals stop([&desktop](int signal) {
    desktop.desk().Form_Unload();
    QCoreApplication::exit(128 + signal);
  });
  return desktop.Exec();
}
