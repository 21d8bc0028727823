#pragma once

#include <QString>

#include <functional>
#include <optional>

class CaptureDevice;
class Shell;

//! What scanning needs from outside. Everything in it lives longer than the scanner.
struct ScanEnvironment
{
    using AlbumAnswer = std::function<void(std::optional<QString> filePath)>;

    Shell *shell;
    CaptureDevice *camera;
    //! Lets the user choose one photo of the album, asking for the permission where it is needed;
    //! nothing when the user cancelled. Answers once.
    std::function<void(AlbumAnswer)> chooseFromAlbum;
};
