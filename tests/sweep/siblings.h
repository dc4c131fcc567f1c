#pragma once

#include <algorithm>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ombrix/components.h"

#include "hosting/shipped.h"
#include "sweep/witness.h"

namespace ombrix::testing {

/// The components that ship, each behind one that passes everything on and knows what the sweep
/// asks afterwards.
class Siblings {
 public:
  Siblings() {
    for (const Shipped& each : shipped()) {
      if (each.role() != Shipped::Role::component) continue;
      registrations_.emplace_back(each.name(), [this, &each] {
        ObjectRef made = std::make_shared<Proxy>(*this, each.make());
        made_.push_back(made);
        return made;
      });
    }
  }
  Siblings(const Siblings&) = delete;
  Siblings& operator=(const Siblings&) = delete;

  /// Forgets all that was.
  void begin() {
    made_.clear();
    moved_on_.clear();
    refusing_.clear();
  }
  bool any_lives() const {
    return std::any_of(made_.begin(), made_.end(), [](const auto& one) { return !one.expired(); });
  }
  const Witness::Counters& moved_on() const { return moved_on_; }

  /// A call that is kept from a component leaves it without a reason, so it gets one of its own: a
  /// method that forgets to hand a reason on must show.
  void refuse(const std::string& component) { refusing_ = component; }
  static std::string refusal(const std::string& component) { return component + " says no."; }

 private:
  class Proxy final : public Object {
   public:
    Proxy(Siblings& all, ObjectRef component) : all_(all), component_(std::move(component)) {}

    std::string_view class_name() const override { return component_->class_name(); }
    Value get(std::string_view member, std::span<Value> arguments) override {
      const bool refuses = member == "ErrDesc" && all_.refusing_ == class_name();
      return refuses ? Value(refusal(all_.refusing_)) : component_->get(member, arguments);
    }
    void let(std::string_view member, const Value& value, std::span<Value> arguments) override {
      component_->let(member, value, arguments);
    }
    void set(std::string_view member, const ObjectRef& object) override {
      component_->set(member, object);
    }
    Value call(std::string_view member, std::span<Value> arguments) override {
      Value answer = component_->call(member, arguments);
      if (member != "Increase_Counter" || !answer.to_flag()) return answer;
      std::string series = component_->get("DocumentPrefix").to_text() + " " +
                           component_->get("BranchPrefix").to_text();
      if (!arguments.empty() && arguments[0].to_flag()) series += " TMP";
      all_.moved_on_[series] = component_->get("NextDocumentNo").to_number() + 1;
      return answer;
    }

   private:
    Siblings& all_;
    ObjectRef component_;
  };

  std::vector<std::weak_ptr<Object>> made_;
  Witness::Counters moved_on_;
  std::string refusing_;
  std::vector<Registration> registrations_;
};

}  // namespace ombrix::testing
