#pragma once

//! The fonts behind the words "sans-serif" and "serif" in pages.
namespace PageFonts {

//! Makes each of them one font that has Latin and Chinese glyphs, the client's own for the first.
//! Before the first profile: the engine asks the system then, once. Nobody else's fonts change.
void choose();

}
