#pragma once

#include "platform/http/HTTPSessionManager.h"

//! How a picture is fetched whose address a page names.
namespace PictureDownload {

//! A page must not reach the device's own files this way.
bool isAllowed(const QUrl &address);
//! From the disk cache where it holds the picture, else from the server, half a minute at the most
//! without a byte.
HTTPSessionManager session(HTTPNetwork *network);

}
