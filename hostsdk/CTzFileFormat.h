// What the saver framework needs of an output format: a file to open and close, writing to switch on and off,
// and whether anything went wrong. CTzLineFormat is the text format.
#pragma once

#include <string>

class CTzFileFormat {
  public:
    CTzFileFormat() = default;
    CTzFileFormat(const CTzFileFormat&) = delete;
    CTzFileFormat& operator=(const CTzFileFormat&) = delete;

    // The virtual operations keep this order.
    virtual ~CTzFileFormat() = default;

    // Opens the output file, UTF-8 name; created or emptied. False when that fails.
    virtual bool open(const std::string& fileName) = 0;

    // The pass switch: while writing is off, output is dropped without error.
    virtual void setWriting(bool writing) = 0;

    // Whether output has been lost since open(). Brings what is buffered to the file first.
    virtual bool hasError() = 0;

    // Closes the file, open or not. False when output was lost, now or before.
    virtual bool close() noexcept = 0;
};
