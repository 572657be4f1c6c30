// Random numbers, and made of them what a drawing's geometry is written with: the same for the same number.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>

namespace tzbench {

class RandomGeometry {
  protected:
    explicit RandomGeometry(uint32_t number) : state_(number * 2654435769U + 1) {}
    ~RandomGeometry() = default;
    RandomGeometry(const RandomGeometry&) = default;
    RandomGeometry& operator=(const RandomGeometry&) = default;

    uint32_t below(uint32_t bound);
    bool chance(uint32_t oneIn) { return below(oneIn) == 0; }
    double unit() { return below(1U << 20U) / static_cast<double>(1U << 20U); }

    // Places and sizes in the picture, whose box is in the members below.
    double x() { return originX_ + width_ * spread(); }
    double y() { return originY_ + height_ * spread(); }
    double size();

    static std::string number(double value);
    static std::string attribute(const char* name, double value) { return attribute(name, number(value)); }
    static std::string attribute(const char* name, const std::string& value) {
        return std::string(" ") + name + "=\"" + value + "\"";
    }
    std::string pick(std::initializer_list<const char*> of) {
        return *(of.begin() + below(uint32_t(of.size())));
    }
    std::string color();
    static std::string name(const char* kind, uint32_t index) { return kind + std::to_string(index); }

    // The values of attributes.
    std::string transform();
    std::string points();
    std::string pathData();

    double width_ = 0;
    double height_ = 0;
    double originX_ = 0;
    double originY_ = 0;
    bool far_ = false;  // whether some lies far outside

  private:
    double spread();

    uint64_t state_;
};

}  // namespace tzbench
