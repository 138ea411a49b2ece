#pragma once

#include "jobend.h"
#include "jobview.h"

#include <QDebug>

#include <initializer_list>

/// Between two looks of a job at something that works for it, in ms.
inline constexpr int kLookMs = 200;

/// A maintenance job that the window can run.
class MaintenanceJob
{
public:
    virtual ~MaintenanceJob() = default;
    /// Asked before anything of the job is seen. Returns whether to begin.
    virtual bool confirm() { return true; }
    /// Does the whole job and returns when it has ended, with everything said that the user has to know.
    virtual JobEnd run() = 0;
};

/// A run of named steps, the same for all jobs. @p Self is the job's class, its steps are members of it.
template <class Self> class Steps
{
protected:
    struct Step
    {
        const char *name;
        JobEnd (Self::*run)();
    };

    /// Who looks at STOP: the loop between the steps, or the steps themselves, where it counts in one place only.
    enum class Stop
    {
        EndsTheRun,
        IsLeftToTheSteps
    };

    /// Runs the steps in order until one is not done or STOP has been pressed, and logs where that was, unless STOP is
    /// left to the steps: such a job is a step of another. A step that ends without naming one gets its own name.
    JobEnd runSteps(const char *job, const JobView &view, std::initializer_list<Step> steps,
                    Stop stop = Stop::EndsTheRun)
    {
        for (const Step &step : steps) {
            if (stop == Stop::EndsTheRun && view.isStopped())
                return log(job, {JobEnd::Stopped, QLatin1String(step.name)});
            JobEnd end = (static_cast<Self *>(this)->*step.run)();
            if (end.isDone())
                continue;
            if (end.step.isEmpty())
                end.step = QLatin1String(step.name);
            return stop == Stop::EndsTheRun ? log(job, end) : end;
        }
        return {};
    }

private:
    // A refusal is no news: the user has just made it.
    static JobEnd log(const char *job, const JobEnd &end)
    {
        if (end.kind != JobEnd::Refused)
            qInfo().nospace().noquote() << job << " : " << end.step
                                        << (end.kind == JobEnd::Stopped ? " stopped" : " failed");
        return end;
    }
};
