#include "plant/objects/connections.h"

#include <algorithm>
#include <span>

namespace plant {

namespace {

// Up to here a look at each connection is cheaper than a set.
constexpr std::size_t few = 16;

std::int64_t idOf(const ObjectData& object, const Connection& connection) {
    return object.isResolved ? connection.to.object->id : connection.to.id;
}

void markRepeated(std::span<Connection> connections) {
    if (connections.size() > few) {
        std::unordered_set<const ObjectData*> seen;
        for (Connection& connection : connections) {
            connection.repeated = !seen.insert(connection.to.object).second;
        }
        return;
    }
    for (auto connection = connections.begin(); connection != connections.end(); ++connection) {
        connection->repeated = std::any_of(connections.begin(), connection, [&](const Connection& earlier) {
            return earlier.to.object == connection->to.object;
        });
    }
}

}  // namespace

void ConnectionTier::visit(ObjectData& object, std::size_t index) {
    object.isResolved = true;
    markRepeated(object.connectionSpan());
    for (const Connection& connection : object.connectionSpan()) {
        if (!connection.repeated && !tells(*connection.to.object, object.id)) {
            backward_.push_back({connection.to.object, &object, index});
        }
    }
}

bool ConnectionTier::tells(const ObjectData& object, std::int64_t other) {
    const auto connections = object.connectionSpan();
    if (connections.size() <= few) {
        return std::any_of(connections.begin(), connections.end(),
                           [&](const Connection& connection) { return idOf(object, connection) == other; });
    }
    const auto [at, isNew] = told_.try_emplace(&object);
    if (isNew) {
        for (const Connection& connection : connections) {
            at->second.insert(idOf(object, connection));
        }
    }
    return at->second.contains(other);
}

void ConnectionTier::tie(Model& model) {
    std::sort(backward_.begin(), backward_.end(), [](const Backward& a, const Backward& b) {
        return a.object != b.object ? a.object->id < b.object->id : a.index < b.index;
    });
    for (std::size_t first = 0; first < backward_.size();) {
        ObjectData& object = *backward_[first].object;
        std::vector<Connection> all;
        for (; first < backward_.size() && backward_[first].object == &object; ++first) {
            all.emplace_back().to.object = backward_[first].other;
        }
        const auto told = object.connectionSpan();
        all.insert(all.end(), told.begin(), told.end());
        object.connections = model.arena.copy(all);
        object.connectionCount = static_cast<std::uint32_t>(all.size());
    }
}

}  // namespace plant
