#pragma once

#include "upload/preparation/HeifPhoto.h"

//! Decodes photos of the HEIF family. Any thread.
namespace HeifDecoder {

//! The main picture of a file, in its full size.
HeifPhoto decode(const QByteArray &file);
//! The smallest picture in the file whose shorter side has that many pixels: often a small one that
//! is there for this purpose.
HeifPhoto decodeSmall(const QByteArray &file, int side);

}
