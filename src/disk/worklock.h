#pragma once

#include <memory>

class QLockFile;

/// The right to work on a player: of all the program windows that this user has open only one job has it at a time,
/// from the moment it takes it until this is destroyed. It is a file "work.lock" in dataFolder().
class WorkLock
{
public:
    /// Takes the right, or finds it taken; does not wait. What a program has left that was killed is taken over.
    WorkLock();
    ~WorkLock();
    WorkLock(const WorkLock &) = delete;
    WorkLock &operator=(const WorkLock &) = delete;

    /// Whether the caller may work. False when another job has the right, in this program or in another one. True also
    /// where no file can be made: to refuse all work would help nobody.
    bool isTaken() const { return m_taken; }

private:
    std::unique_ptr<QLockFile> m_file;
    bool m_taken;
};
