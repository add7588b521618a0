// Runs a client of the accessibility bus in a process of its own (assistiveClient.py).
#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QThread>

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/sourceFolder.h"

namespace harness {

// Handles events while it waits, because the process queries this one. False after two minutes: a page takes hundreds of queries.
inline bool waitForEnd(QProcess& process) {
  QElapsedTimer timer;
  timer.start();
  while (process.state() != QProcess::NotRunning && timer.elapsed() < 120000) {
    QCoreApplication::processEvents();
    QThread::msleep(2);
  }
  return process.state() == QProcess::NotRunning;
}

// The arguments for one of the script's commands.
inline QStringList assistiveArguments(const QString& command, const QStringList& rest) {
  const std::string script = sourceFolder() + "/tests/desktop/assistiveClient.py";
  return QStringList{QString::fromStdString(script), command, QCoreApplication::applicationName()} + rest;
}

// What the client prints.
inline std::string askAssistiveClient(const QString& command, const QStringList& rest = {}, int exitCode = 0) {
  QProcess process;
  if (exitCode == 0) process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start("/usr/bin/python3", assistiveArguments(command, rest));
  EXPECT_TRUE(waitForEnd(process)) << command.toStdString();
  EXPECT_EQ(process.exitCode(), exitCode) << command.toStdString();
  return process.readAllStandardOutput().toStdString();
}

}  // namespace harness
