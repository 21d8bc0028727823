#pragma once

#include <gst/gst.h>

#include <memory>

//! Owns what the media framework hands out, and gives it back by the type's own function.
template <auto giveBack>
struct GstGivesBack
{
    template <typename Type>
    void operator()(Type *object) const
    {
        giveBack(object);
    }
};

template <typename Type>
using GstObjectPointer = std::unique_ptr<Type, GstGivesBack<gst_object_unref>>;
template <typename Type>
using GObjectPointer = std::unique_ptr<Type, GstGivesBack<g_object_unref>>;
using GstCapsPointer = std::unique_ptr<GstCaps, GstGivesBack<gst_caps_unref>>;
using GstSamplePointer = std::unique_ptr<GstSample, GstGivesBack<gst_sample_unref>>;
using GstMessagePointer = std::unique_ptr<GstMessage, GstGivesBack<gst_message_unref>>;
using GErrorPointer = std::unique_ptr<GError, GstGivesBack<g_error_free>>;
using GMainContextPointer = std::unique_ptr<GMainContext, GstGivesBack<g_main_context_unref>>;
