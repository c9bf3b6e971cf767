/// \file
/// Reference implementation of the k-d tree: nodes with pointers to their children, and recursive
/// walks.
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <queue>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::test {

/// Slow and simple k-d tree that meets its nodes in the same order as PointKDTree.
template <class Value, int N, class KeyAccessor>
class ReferenceKDTree {
public:
    using Key = Point<double, N>;
    struct Node {
        Value value;
        Node* left;
        Node* right;
    };

    void build(const std::vector<Value>& values) {
        std::vector<const Value*> scratch;
        for (const Value& value : values) scratch.push_back(&value);
        root = nullptr;
        used = 0;
        nodes.resize(values.size());
        root = buildRange(scratch, 0, static_cast<int>(scratch.size()), 0);
    }

    Value findNearestIf(const Key& point, const std::function<bool(const Value&)>& accept) const {
        Nearest state;
        nearest(root, 0, point, accept, state);
        return state.best;
    }
    Value findNearest(const Key& point) const {
        return findNearestIf(point, [](const Value&) { return true; });
    }
    std::vector<Value> findKNearest(const Key& point, int k) const {
        std::vector<Held> held;
        if (k > 0 && root != nullptr) kNearest(root, 0, point, static_cast<std::size_t>(k), held);
        std::vector<Value> values;
        for (const Held& each : held) values.push_back(each.value);
        return values;
    }

    static double coordinate(const Value& value, int depth) { return KeyAccessor()(value, depth % N); }
    static double squaredDistance(const Key& point, const Value& value) {
        double sum = 0.0;
        for (int i = 0; i < N; ++i) {
            const double d = point[static_cast<std::size_t>(i)] - coordinate(value, i);
            sum = sum + d * d;
        }
        return sum;
    }
    static double squaredGap(const Key& point, const Value& value, int depth) {
        const double d = point[static_cast<std::size_t>(depth % N)] - coordinate(value, depth);
        return d * d;
    }
    static bool goesLeft(const Key& point, const Value& value, int depth) {
        return coordinate(value, depth) > point[static_cast<std::size_t>(depth % N)];
    }

    std::vector<Node> nodes;
    Node* root = nullptr;
    int depth = 0;

private:
    static constexpr double kGreatest = std::numeric_limits<double>::max();
    struct Nearest {
        Value best{};
        double bestSquared = kGreatest;
        double limitSquared = kGreatest;
    };
    struct Held {
        Value value;
        double squared;
    };

    Node* take(const Value& value) {
        Node& node = nodes.at(used++);
        node = {value, nullptr, nullptr};
        return &node;
    }

    Node* buildRange(std::vector<const Value*>& values, int low, int high, int d) {
        if (high == low) return nullptr;
        if (high - low == 1) {
            if (d > depth) depth = d;
            return take(*values[static_cast<std::size_t>(low)]);
        }
        const int middle = low + (high - low) / 2;
        std::nth_element(
            values.begin() + low, values.begin() + middle, values.begin() + high,
            [d](const Value* a, const Value* b) { return coordinate(*a, d) < coordinate(*b, d); });
        Node* node = take(*values[static_cast<std::size_t>(middle)]);
        node->left = buildRange(values, low, middle, d + 1);
        node->right = buildRange(values, middle + 1, high, d + 1);
        if (d > depth) depth = d;
        return node;
    }

    static void nearest(const Node* node, int d, const Key& point,
                        const std::function<bool(const Value&)>& accept, Nearest& state) {
        const bool left = goesLeft(point, node->value, d);
        const Node* near = left ? node->left : node->right;
        const Node* far = left ? node->right : node->left;
        if (near != nullptr) nearest(near, d + 1, point, accept, state);
        const double squared = squaredDistance(point, node->value);
        if (state.bestSquared > squared && state.limitSquared > squared && accept(node->value)) {
            state.best = node->value;
            state.bestSquared = squared;
        }
        const double gap = squaredGap(point, node->value, d);
        if (state.bestSquared > gap && state.limitSquared > gap && far != nullptr)
            nearest(far, d + 1, point, accept, state);
    }

    static void kNearest(const Node* node, int d, const Key& point, std::size_t k, std::vector<Held>& held) {
        const bool left = goesLeft(point, node->value, d);
        const Node* near = left ? node->left : node->right;
        const Node* far = left ? node->right : node->left;
        if (near != nullptr) kNearest(near, d + 1, point, k, held);
        const double squared = squaredDistance(point, node->value);
        if (held.size() < k || held.back().squared > squared) {
            if (held.size() == k) held.pop_back();
            std::size_t place = held.size();
            while (place > 0 && held[place - 1].squared > squared) --place;
            held.insert(held.begin() + static_cast<std::ptrdiff_t>(place), Held{node->value, squared});
        }
        if (held.size() == k && !(held.back().squared > squaredGap(point, node->value, d))) return;
        if (far != nullptr) kNearest(far, d + 1, point, k, held);
    }

    std::size_t used = 0;
};

/// The walk outward over a ReferenceKDTree.
template <class Value, int N, class KeyAccessor>
class ReferenceNearestWalk {
public:
    using Tree = ReferenceKDTree<Value, N, KeyAccessor>;
    using Node = typename Tree::Node;

    ReferenceNearestWalk(const Tree& tree, const typename Tree::Key& from) : point(from) {
        descend(tree.root, 0);
    }

    bool done() const { return found.empty(); }
    const Value& value() const { return found.top().value; }
    void advance() {
        if (!found.empty()) found.pop();
        if (found.empty()) {
            if (!pending.empty()) expand();
            return;
        }
        while (!pending.empty() && pending.top().squared < found.top().squared) expand();
    }

private:
    struct Found {
        Value value;
        double squared;
        bool operator>(const Found& other) const { return squared > other.squared; }
    };
    struct Pending {
        const Node* node;
        int depth;
        double squared;
        bool operator>(const Pending& other) const { return squared > other.squared; }
    };

    void expand() {
        const Pending top = pending.top();
        descend(top.node, top.depth);
        pending.pop();
    }

    void descend(const Node* node, int d) {
        if (node == nullptr) return;
        const bool left = Tree::goesLeft(point, node->value, d);
        const Node* far = left ? node->right : node->left;
        descend(left ? node->left : node->right, d + 1);
        found.push({node->value, Tree::squaredDistance(point, node->value)});
        const double gap = Tree::squaredGap(point, node->value, d);
        if (!(found.top().squared > gap)) {
            if (far != nullptr) pending.push({far, d + 1, gap});
            return;
        }
        descend(far, d + 1);
    }

    typename Tree::Key point;
    std::priority_queue<Found, std::vector<Found>, std::greater<>> found;
    std::priority_queue<Pending, std::vector<Pending>, std::greater<>> pending;
};

}  // namespace quarn::test
