#pragma once

#include "audio/AudioMessages.h"

#include <QByteArray>

#include <functional>
#include <memory>

/// A loudspeaker. GUI thread.
class SoundOutput {
public:
    SoundOutput() = default;
    SoundOutput(const SoundOutput&) = delete;
    SoundOutput& operator=(const SoundOutput&) = delete;
    virtual ~SoundOutput() = default;

    /// Begins to play sound of a form; false when there is no device that can.
    virtual bool open(const corvanta::audio::SoundFormat& format) = 0;
    virtual void close() = 0;
    /// Plays samples behind those that wait; what would be heard too late is dropped, oldest first.
    virtual void play(const QByteArray& samples) = 0;
    /// From 0 to 1.
    virtual void setVolume(double volume) = 0;
};

/// A microphone. GUI thread.
class SoundInput {
public:
    using Receiver = std::function<void(const QByteArray& samples)>;

    SoundInput() = default;
    SoundInput(const SoundInput&) = delete;
    SoundInput& operator=(const SoundInput&) = delete;
    virtual ~SoundInput() = default;

    /// Begins to record sound of a form; false when there is no device that can.
    virtual bool open(const corvanta::audio::SoundFormat& format, Receiver receiver) = 0;
    virtual void close() = 0;
};

/// This computer's devices, chosen by the system's settings.
std::unique_ptr<SoundOutput> systemSoundOutput();
std::unique_ptr<SoundInput> systemSoundInput();
