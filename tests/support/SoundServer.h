#pragma once

#include <QByteArray>
#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/// A PulseAudio server of the test's own, with a loudspeaker that can be heard and a microphone that can be spoken
/// into. This process's sound goes to it from `start` on.
class SoundServer final {
public:
    static constexpr int Rate = 16000; ///< of what is heard, one channel of 16 bits

    /// Ends it and everything that was started here.
    ~SoundServer();
    /// Returns when it takes connections; false when it does not.
    bool start();

    /// Begins to listen at the loudspeaker.
    void listen();
    /// What was heard since, 16-bit samples.
    const QByteArray& heard();
    /// Forgets what was heard.
    void forget();
    /// Says a sound of one channel into the microphone; goes on by itself for as long as it is.
    void speak(const QByteArray& samples, int rate);

private:
    static void end(QProcess& process);

    QTemporaryDir dir_;
    QProcess server_;
    QProcess ear_;
    QProcess mouth_;
    QByteArray heard_;
};
