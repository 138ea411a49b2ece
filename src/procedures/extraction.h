#pragma once

#include "job.h"

#include <QString>

/// Unpacks an archive into the folder it lies in, with the extraction tool, and deletes it. STOP ends the tool.
class Extraction : private Steps<Extraction>
{
public:
    /// @p archive is absolute, with forward slashes.
    Extraction(JobView &view, const QString &archive);

    /// Failed, without a word to the user, when the tool could not be started; else done, whatever it brought.
    JobEnd run();

    /// After run(): whether the tool says that it has unpacked all of the archive. One that was killed does not.
    bool hasAllUnpacked() const { return m_allUnpacked; }

private:
    friend class Steps<Extraction>;
    JobEnd runTool();
    JobEnd removeRest();

    JobView &m_view;
    QString m_archive;
    QString m_folder;
    bool m_allUnpacked = false;
};
