#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "ombrix/purchase/document.h"

#include "frame/asker.h"

namespace ombrix {

/// The counter of a series, from drawing a number to moving on. The component gives its number back
/// when it is released before it moved on.
class SeriesCounter {
 public:
  struct Series {
    const std::string& company;
    const std::string& branch;
    const std::string& document;
  };
  SeriesCounter(const Asker& asker, const Series& series);

  /// A series without a row is opened.
  void skip_checking() { component_.set("SkipChecking", true); }
  /// False with the component's reason. `temporary` is left out of the calls that draw a final
  /// number.
  bool draw(std::optional<bool> temporary = std::nullopt);
  /// The number as the component gives it, for a key that is a text.
  std::string number_text() { return component_.get("NextDocumentNo").to_text(); }
  double number() { return component_.get("NextDocumentNo").to_number(); }
  std::int32_t whole_number() { return component_.get("NextDocumentNo").to_long(); }
  bool move_on(std::optional<bool> temporary = std::nullopt);

 private:
  Asker asker_;
  Sibling component_;
};

}  // namespace ombrix

namespace ombrix::purchase {

/// The counter of a document's own series, or of another one of its branch.
class Document::Counter : public SeriesCounter {
 public:
  explicit Counter(Document& document) : Counter(document, document.DocumentPrefix()) {}
  Counter(Document& document, const std::string& series)
      : SeriesCounter(document.asker(),
                      {document.CompanyPrefix(), document.BranchPrefix(), series}) {}
};

/// The final number of a document in a run that processes it: from the counter of its series, or
/// the client's own (`DocFlag`).
class Document::FinalNumber {
 public:
  /// What the document passes to `Increase_Counter`.
  FinalNumber(Document& document, Keys keys, std::optional<bool> increase_argument)
      : document_(document), keys_(keys), increase_argument_(increase_argument) {}

  /// Sets the identity; false with the counter's reason. Not called in a run that keeps the number.
  bool draw();
  std::string number() const { return document_.final_number(keys_.identity); }
  /// The document is stored under the number from now on.
  void take(std::string number) { keys_.number = std::move(number); }
  /// After all else is done: moves the counter on, or behind a number of the client's own. In a
  /// sync run without such a number there is nothing to do.
  bool close();

 private:
  void pass_own_number();

  Document& document_;
  Keys keys_;
  std::optional<bool> increase_argument_;
  std::optional<Counter> counter_;
};

template <class SaveMaster, class SaveDetail>
bool Document::create_under_temporary_number(Keys keys, SaveMaster save_master,
                                             SaveDetail save_detail) {
  Counter counter(*this);
  if (!counter.draw(true)) return false;
  keys.identity = counter.number();
  keys.number = temporary_number(keys.identity);
  return save_master() && save_detail() && counter.move_on(true);
}

}  // namespace ombrix::purchase
