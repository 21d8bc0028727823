#pragma once

#include <QString>

//! The file that the camera writes: hidden in the album's folder until it is complete. What was not
//! kept is deleted with the next one, or with this object.
class CaptureFile
{
public:
    enum class Kind { Picture, Clip };

    CaptureFile(const QString &folder, Kind kind);
    ~CaptureFile();
    Q_DISABLE_COPY_MOVE(CaptureFile)

    //! False: there is no folder to write to.
    bool isPossible() const { return !m_folder.isEmpty(); }
    //! A new path; the folder is made where it is missing.
    QString begin();
    //! Shows the file in the album. Its path there, null when nothing usable was written.
    QString keep();

private:
    void discard();

    QString m_folder;
    Kind m_kind;
    QString m_name;
};
