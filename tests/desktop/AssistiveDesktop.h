// A desktop with a client of the accessibility bus, which also listens.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "tests/desktop/AssistiveProgram.h"
#include "tests/desktop/QtDesktop.h"

namespace harness {

class AssistiveDesktop : public QtDesktop {
 protected:
  AssistiveDesktop() { listener.setProcessChannelMode(QProcess::ForwardedErrorChannel); }
  ~AssistiveDesktop() override {
    listener.closeWriteChannel();
    if (!waitForEnd(listener)) listener.kill();
  }

  static std::string client(const QString& command, const QStringList& rest = {}, int exitCode = 0) {
    return askAssistiveClient(command, rest, exitCode);
  }

  void startListening() {
    listener.start("/usr/bin/python3", assistiveArguments("listen", {}));
    EXPECT_TRUE(eventuallyObserves("listening"));
  }
  bool eventuallyObserves(const std::string& line) {
    return eventually([&] {
      while (listener.canReadLine()) observed.push_back(listener.readLine().trimmed().toStdString());
      return std::find(observed.begin(), observed.end(), line) != observed.end();
    });
  }

  QProcess listener;
  std::vector<std::string> observed;
};

}  // namespace harness
