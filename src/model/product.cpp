#include "model/product.h"

#include <utility>

namespace vantor {

Product Product::make(std::string name, std::vector<std::string> colors, std::string brand) {
    return {Uuid::random(), std::move(name), std::move(colors), std::move(brand)};
}

} // namespace vantor

std::size_t std::hash<vantor::Product>::operator()(const vantor::Product& product) const noexcept {
    std::size_t value = std::hash<vantor::Uuid>{}(product.id);
    const auto mix = [&value](std::string_view text) {
        value = value * 0x9E3779B97F4A7C15U + std::hash<std::string_view>{}(text);
    };
    mix(product.name);
    for (const auto& color : product.colors)
        mix(color);
    mix(product.brand);
    return value;
}
