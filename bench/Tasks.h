#pragma once

#include <QString>
#include <QStringList>
#include <functional>

// One benchmark task: set up untimed, then the timed action that drives the real screens, and
// the fastest single statement that gives the same answer (the floor). Runs in a process of its
// own, on the database of the program folder.
struct TaskTimes {
    double medianMs = 0;
    double floorMs = -1;   // negative when no single statement stands for the task
    QString floorKind;     // which statement gave the floor: "join", "per-row" or "one"
    double statements = 0; // statements sent per run of the timed action
};

QStringList TaskNames();
TaskTimes RunTask(const QString& name, int runs, qint64 regularCustomer);
