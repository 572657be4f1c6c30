// See the header. A placeholder is an element like those that it stands for, so that the toolkit puts the
// same line ends around it.
#include "export/ElementTexts.h"

#include <QTextStream>
#include <QUuid>
#include <charconv>
#include <string_view>

#include "export/ElementBuilder.h"

namespace tzsvg {

// The name is one that no stored text can have foreseen, in a comment or anywhere else.
ElementTexts::ElementTexts() : name_(QLatin1Char('p') + QUuid::createUuid().toString(QUuid::Id128)) {}

ElementText ElementTexts::add(ElementBuilder& element) {
    constexpr size_t kChunkSize = size_t{1} << 20U;
    constexpr size_t kLastElement = kChunkSize / 16;
    if (chunks_.empty() || chunks_.back().size() > kChunkSize - kLastElement) {
        chunks_.emplace_back();
        chunks_.back().reserve(kChunkSize);
    }
    std::string& chunk = chunks_.back();
    const size_t start = chunk.size();
    element.save(chunk);
    size_ += chunk.size() - start;
    return {static_cast<uint32_t>(chunks_.size() - 1), static_cast<uint32_t>(start), chunk.size() - start};
}

QDomElement ElementTexts::placeholder(std::vector<ElementText> run) {
    runs_.push_back(std::move(run));
    return factory_.createElement(name_ + QString::number(runs_.size() - 1));
}

std::string ElementTexts::save(const QDomDocument& document) const {
    QByteArray frame;
    {
        QString text;
        QTextStream stream(&text);
        document.save(stream, 0);
        stream.flush();
        frame = text.toUtf8();
    }
    const std::string opening = "<" + name_.toStdString();
    constexpr std::string_view kClosing = "/>";
    std::string_view rest(frame.constData(), static_cast<size_t>(frame.size()));
    std::string saved;
    saved.reserve(rest.size() + size_);
    for (size_t found = rest.find(opening); found != std::string_view::npos; found = rest.find(opening)) {
        saved += rest.substr(0, found);
        rest.remove_prefix(found + opening.size());
        size_t number = 0;
        const char* const digitsEnd = std::from_chars(rest.data(), rest.data() + rest.size(), number).ptr;
        rest.remove_prefix(static_cast<size_t>(digitsEnd - rest.data()) + kClosing.size());
        for (const ElementText& text : runs_[number])
            saved.append(chunks_[text.chunk], text.start, text.size);
        saved.pop_back();  // the line end, if there is to be one, follows the placeholder
    }
    saved += rest;
    return saved;
}

}  // namespace tzsvg
