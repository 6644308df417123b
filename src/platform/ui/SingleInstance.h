#pragma once

#include <QString>

// The claim of one copy of the program, or of the admin tool putting a backup back, on a
// program folder: a lock on the file Mirvane.lock in the folder itself, so it holds however
// the folder is named (a link, another spelling of its path, another temporary folder). The
// system releases it when the process ends, however it ends. Held for as long as this object
// lives once anotherIsRunning() gave false.
class SingleInstance {
public:
    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // Takes the claim; true when another process holds it.
    bool anotherIsRunning();

    // The lock file of the current program folder.
    static QString lockFilePath();

private:
    int descriptor_ = -1;
    bool held_ = false;
};
