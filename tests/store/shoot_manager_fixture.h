// A ShootManager on a file in memory, and shoots and sets that are quick to make and to name.
#pragma once

#include "store/shoot_manager.h"
#include "tests/store/store_fixture.h"
#include "tests/support/differences.h"
#include "tests/support/lone_stores.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vantor::testing {

class ShootManagerFixture : public StoreFixture {
protected:
    ShootManagerFixture() : StoreFixture("/home/anna/.local/share/Vantor/shoots.json") {}

    // At the front of the list and, as a new shoot is, active.
    Uuid newShoot(const std::string& name) {
        auto shoot = Shoot::make(name, "", "", m_clock.now());
        const auto shootId = shoot.id;
        m_manager.addShoot(std::move(shoot));
        return shootId;
    }
    Uuid newSet(Uuid shoot, const std::string& number, const std::string& brand = "") {
        auto set = SetData::make(m_clock.now());
        const auto setId = set.id;
        set.setNumber = number;
        set.brand = brand;
        m_manager.addSet(shoot, std::move(set));
        return setId;
    }
    [[nodiscard]] const Shoot& shoot(Uuid shootId) const {
        for (const auto& each : m_manager.shoots()) {
            if (each.id == shootId)
                return each;
        }
        throw std::out_of_range(shootId.text());
    }
    // The numbers of a shoot's sets, from the front.
    [[nodiscard]] std::vector<std::string> numbers(Uuid shootId) const {
        std::vector<std::string> all;
        for (const auto& set : shoot(shootId).sets)
            all.push_back(set.setNumber);
        return all;
    }
    // The sets named by a shoot's log, oldest first.
    [[nodiscard]] std::vector<Uuid> logged(Uuid shootId) const {
        std::vector<Uuid> all;
        for (const auto& each : shoot(shootId).activationLog)
            all.push_back(each.setId);
        return all;
    }

    LoneShoots m_manager{&m_file, m_clock.clock()};
};

} // namespace vantor::testing
