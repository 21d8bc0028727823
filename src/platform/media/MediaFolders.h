#pragma once

#include "platform/media/PhotoAsset.h"

#include <QList>
#include <QStringList>

#include <stop_token>

//! Photos and clips in folders.
namespace MediaFolders {

//! How deep below a folder and at how many entries it looks: a link to the whole disk must not keep
//! it busy.
constexpr int deepest = 8;
constexpr int mostEntries = 50'000;

//! The photos or the clips in the folders and below, each once, newest first. Hidden folders and
//! those that keep a program's cache are left out. Any thread; a stop ends it at the next folder.
QList<PhotoAsset> assetsIn(
    const QStringList &folders, PhotoAsset::MediaType mediaType, const std::stop_token &stop = {});

}
