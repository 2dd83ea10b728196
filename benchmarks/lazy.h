#pragma once

#include <functional>
#include <memory>

namespace velmo::bench {

// What a measurement needs, made when the first one that needs it runs. Copies share it.
template <typename Value>
class Lazy {
public:
    explicit Lazy(std::function<std::unique_ptr<Value>()> make) : shared_(std::make_shared<Shared>()) {
        shared_->make = std::move(make);
    }

    Value& operator*() const {
        if (!shared_->value)
            shared_->value = shared_->make();
        return *shared_->value;
    }
    Value* operator->() const { return &**this; }

private:
    struct Shared {
        std::function<std::unique_ptr<Value>()> make;
        std::unique_ptr<Value> value;
    };
    std::shared_ptr<Shared> shared_;
};

} // namespace velmo::bench
