#include "hostsdk/CTzLineFormat.h"

#include <array>
#include <charconv>
#include <string>

namespace {

constexpr int kRealDigits = 6;  // those of "%g"

}  // namespace

bool CTzLineFormat::open(const std::string& fileName) {
    CTzLineFormat::close();  // a saver's own close also ends its save
    fileName_ = fileName;
    atLineStart_ = true;
    // A name that the system would cut at a null character names another file.
    std::FILE* const file =
        fileName.find('\0') == std::string::npos ? std::fopen(fileName.c_str(), "wb") : nullptr;
    failed_ = file == nullptr;
    if (file) stream_ = Stream{std::unique_ptr<std::FILE, CloseFile>(file), true};
    return !failed_;
}

void CTzLineFormat::setWriting(bool writing) {
    if (stream_) stream_->writing = writing;
}

bool CTzLineFormat::hasError() {
    if (stream_ && std::fflush(stream_->file.get()) != 0) failed_ = true;
    return failed_;
}

bool CTzLineFormat::close() noexcept {
    if (stream_ && std::fclose(stream_->file.release()) != 0) failed_ = true;
    stream_.reset();
    fileName_.clear();
    return !failed_;
}

void CTzLineFormat::writeText(std::string_view text) {
    if (!stream_) {
        failed_ = true;
        return;
    }
    if (!stream_->writing) return;
    // An empty text may be a null pointer, which the library does not take.
    if (!text.empty() && std::fwrite(text.data(), 1, text.size(), stream_->file.get()) != text.size()) {
        failed_ = true;
    }
    atLineStart_ = false;
}

void CTzLineFormat::writeSeparator() {
    if (!atLineStart_) writeText(separatorText());
}

void CTzLineFormat::lineBreak(bool force) {
    if (!force && atLineStart_) return;
    writeText("\n");
    atLineStart_ = true;
}

void CTzLineFormat::writeInteger(int32_t value, bool separate) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), value).ptr;
    writeValue({digits.data(), static_cast<size_t>(end - digits.begin())}, separate);
}

void CTzLineFormat::writeShortInteger(int16_t value, bool separate) {
    writeInteger(value, separate);
}

void CTzLineFormat::writeReal(double value, bool separate) {
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.begin(), digits.end(), value, std::chars_format::general, kRealDigits).ptr;
    writeValue({digits.data(), static_cast<size_t>(end - digits.begin())}, separate);
}

void CTzLineFormat::writeValue(std::string_view text, bool separate) {
    if (separate) writeSeparator();
    writeText(text);
}

void CTzLineFormat::writeString(const char* text) {
    writeValue(text, true);
}

void CTzLineFormat::writeQuoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '"') quoted += '\\';
        quoted += c;
    }
    quoted += '"';
    writeText(quoted);
}
