#include "platform/CompoundFile.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-output-stdio.h>
#include <gsf/gsf-utils.h>

#include <cstdint>
#include <cstdio>
#include <mutex>

namespace corvanta::platform {

namespace {

/// A writer of the library: closed at the latest when it goes, as the library asks for.
class Output final {
public:
    explicit Output(GsfOutput* output = nullptr)
        : output_(output) {}
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;
    ~Output() {
        if (output_ != nullptr) {
            close();
            g_object_unref(output_);
        }
    }

    GsfOutput* get() const { return output_; }
    bool close() { return gsf_output_is_closed(output_) != 0 || gsf_output_close(output_) != 0; }

private:
    GsfOutput* output_;
};

class GsfCompoundFile final : public CompoundFile {
public:
    GsfCompoundFile(const char* name, std::FILE* file, const char* streamName)
        : sink_(gsf_output_stdio_new_FILE(name, file, 0))
        , document_(GSF_OUTPUT(gsf_outfile_msole_new(sink_.get())))
        , stream_(gsf_outfile_new_child(GSF_OUTFILE(document_.get()), streamName, 0)) {}

    bool write(const void* data, std::size_t size) override {
        return gsf_output_write(stream_.get(), size, static_cast<const std::uint8_t*>(data)) != 0;
    }

    bool close() override {
        const bool written = stream_.close();
        const bool completed = document_.close(); // closes the sink, too
        return sink_.close() && written && completed && gsf_output_error(sink_.get()) == nullptr;
    }

private:
    // The innermost goes first.
    Output sink_;
    Output document_;
    Output stream_;
};

} // namespace

std::unique_ptr<CompoundFile> createCompoundFile(const std::filesystem::path& path, const char* streamName) {
    static std::once_flag once;
    std::call_once(once, gsf_init);
    std::FILE* const file = std::fopen(path.c_str(), "wbx"); // closed by the sink
    if (file == nullptr)
        return nullptr;
    return std::make_unique<GsfCompoundFile>(path.c_str(), file, streamName);
}

} // namespace corvanta::platform
