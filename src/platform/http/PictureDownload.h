#pragma once

#include "platform/http/HTTPSessionManager.h"

//! How a picture is fetched whose address a page names.
namespace PictureDownload {

//! From the address itself, from the disk cache where it holds the picture, else from the server,
//! half a minute at the most without a byte. No other address is read, so that no page reaches the
//! device's own files.
HTTPSessionManager session(HTTPNetwork *network);

}
