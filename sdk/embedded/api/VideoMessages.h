#pragma once

#include "media/Stream.h"

#include <string>

namespace ipncsdk::api {

// The messages of a video request.

std::string stateText(int requestId, media::OpenStage stage);
/// `mainStream` is the "hd" of the message.
std::string openText(int requestId, const media::StreamParameters& parameters, bool mainStream);
std::string closeText(int requestId, media::StreamError reason);

// Some thousand times a second over all streams: written without a document in between, into a text that keeps its
// memory from one to the next.

void writePictureText(std::string& text, int requestId, const media::DecodedFrame& frame);
void writeCodedText(std::string& text, int requestId, const media::CodedFrame& frame);
void writeSoundText(std::string& text, int requestId, const media::SoundBlock& sound);

} // namespace ipncsdk::api
