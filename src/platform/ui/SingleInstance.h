#pragma once

#include <QLockFile>
#include <QString>

// Tells whether a copy of the program is already running on this machine for the same
// program folder. The claim is held for as long as this object lives.
class SingleInstance {
public:
    SingleInstance();
    bool anotherIsRunning();

    // The lock file that marks a running copy of the program in the current program folder.
    static QString lockFilePath();

private:
    QLockFile lock_;
};
