// The text output format: writes text, numbers and line breaks to a file. Savers derive from it or own one.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string_view>

#include "hostsdk/CTzFileFormat.h"

// Values are written one after another with separatorText() between them; numbers in the "C" locale whatever
// the host's is. What is written is checked: output that does not reach the file is an error, and stays one
// until the next open().
class CTzLineFormat : public CTzFileFormat {
  public:
    bool open(const std::string& fileName) override;
    void setWriting(bool writing) override;
    bool hasError() override;
    bool close() noexcept override;

    // The virtual operations go on in this order.

    // The text between values: none in this format.
    virtual std::string_view separatorText() const { return {}; }

    // Writes text as it is. All output passes here. Writing to a closed file is an error.
    virtual void writeText(std::string_view text);

    // Writes the separator, except at the start of a line.
    virtual void writeSeparator();

    // Ends the line: writes "\n", at the start of a line only when forced.
    virtual void lineBreak(bool force);

    // Values, with the separator before them when asked: integers as "%d", reals as "%g", text as it is.
    virtual void writeInteger(int32_t value, bool separate);
    virtual void writeShortInteger(int16_t value, bool separate);
    virtual void writeReal(double value, bool separate);
    virtual void writeValue(std::string_view text, bool separate);
    virtual void writeString(const char* text);  // as writeValue, separated

    // Writes text between double quotes; a double quote inside is written as \".
    virtual void writeQuoted(std::string_view text);

  private:
    struct CloseFile {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };
    struct Stream {
        std::unique_ptr<std::FILE, CloseFile> file;
        bool writing = true;
    };

    std::string fileName_;
    std::optional<Stream> stream_;
    bool failed_ = false;
    bool atLineStart_ = true;  // also right after open(): a file starts with a line
};
