#pragma once

#include "platform/CaptureDevice.h"

//! A camera whose permission and frames the test decides.
class ScriptedCamera : public CaptureDevice
{
public:
    bool isPresent() const override { return present; }
    AuthorizationStatus authorizationStatus() const override { return status; }
    void requestAccess(std::function<void(bool)> answer) override { asked = std::move(answer); }
    void start() override { ++starts; }
    void stop() override { }
    bool hasTorch() const override { return false; }
    void setTorchOn(bool) override { }

    bool present = true;
    AuthorizationStatus status = AuthorizationStatus::Authorized;
    std::function<void(bool)> asked;
    int starts = 0;
};
