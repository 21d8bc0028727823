#include "upload/preparation/MediaCodecs.h"

#include "platform/modules/Module.h"

const MediaCodecs &MediaCodecs::shared()
{
    static const auto *const loaded = Module::load<MediaCodecs>("vant_codecs");
    static const MediaCodecs none;
    return loaded ? *loaded : none;
}
