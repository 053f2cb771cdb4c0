// Data files of alarms.

#include "Fuzz.h"
#include "sensor/DatFile.h"

#include <QBuffer>

using namespace corvanta;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    sensor::readDatFile(buffer);
    return 0;
}
