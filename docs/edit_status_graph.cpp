// Prints the edit-status diagram of the guide (Graphviz dot) from the one
// transition table of the editing code: every status, operation and client
// answer goes through NextStatus, so the picture cannot fall behind the table.
//
//   varnel_edit_status_graph > edit_status.dot
#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "recordset/edit_state.h"

namespace {

using varnel::Enum_EditRecord;
using varnel::Enum_EditStatus;
using varnel::internal::EditOp;
using varnel::internal::Prelude;

struct StatusName {
  Enum_EditStatus status;
  const char* name;
};

constexpr StatusName kStatuses[] = {
    {varnel::E_Nothing, "E_Nothing"},
    {varnel::E_Default, "E_Default"},
    {varnel::E_Query, "E_Query"},
    {varnel::E_Modify, "E_Modify"},
    {varnel::E_Delete, "E_Delete"},
    {varnel::E_AddNew, "E_AddNew"},
    {varnel::E_Copy, "E_Copy"},
    {varnel::E_ModifyDelete, "E_ModifyDelete"},
    {varnel::E_AddNewDelete, "E_AddNewDelete"},
    {varnel::E_CopyDelete, "E_CopyDelete"},
};

// The operations as a client meets them. The roll-back column is reached by
// UpdateRecord's E_OtherErr answer, so it is not an operation of its own.
struct OpName {
  EditOp op;
  const char* name;
  bool answered;  // the client's answer to the save decides, where it is asked
};

constexpr OpName kOps[] = {
    {EditOp::kModify, "Modify", false},
    {EditOp::kNewRecord, "NewRecord", false},
    {EditOp::kCopyRecord, "CopyRecord", false},
    {EditOp::kDeleteRecord, "DeleteRecord", false},
    {EditOp::kUndoRecord, "UndoRecord", false},
    {EditOp::kCommit, "UpdateRecord", true},
    {EditOp::kDiscard, "UpdateRecord: discarded", false},
    {EditOp::kEnterQuery, "NewQuery, RefineQuery", false},
    {EditOp::kLeaveQuery, "CancelQuery", false},
    {EditOp::kLoad, "a load", false},
    {EditOp::kOpenNothing, "a load finds nothing to open", false},
    {EditOp::kClose, "CloseDataSource", false},
};

struct AnswerName {
  Enum_EditRecord answer;
  const char* name;
};

constexpr AnswerName kAnswers[] = {{varnel::E_Succeed, "E_Succeed"},
                                   {varnel::E_Defeat, "E_Defeat"},
                                   {varnel::E_OtherErr, "E_OtherErr"}};

// One arrow per (from, to, what runs first), labelled with every operation
// that takes it, in table order.
using Arrow = std::tuple<int, int, Prelude>;

std::string Style(Prelude prelude) {
  switch (prelude) {
    case Prelude::kSaveFirst:
      return ", style=dashed";
    case Prelude::kDropRemoved:
      return ", style=dotted";
    case Prelude::kNone:
      break;
  }
  return "";
}

void AddLabel(std::vector<std::string>& labels, const std::string& label) {
  for (const std::string& known : labels) {
    if (known == label) {
      return;
    }
  }
  labels.push_back(label);
}

std::string Joined(const std::vector<std::string>& labels) {
  std::string text;
  for (const std::string& label : labels) {
    text += (text.empty() ? "" : ", ") + label;
  }
  return text;
}

// The move op makes from every status where it does anything, whatever the
// client answers, when that is the same move everywhere and op does something
// in all statuses but at most two (a load, a close, entering query mode, a new
// row): such an operation is drawn once, from "any status". Unset otherwise.
std::optional<varnel::internal::EditMove> SameFromEveryStatus(const OpName& op) {
  std::optional<varnel::internal::EditMove> same;
  size_t moving = 0;
  for (const StatusName& from : kStatuses) {
    const varnel::internal::EditMove move = varnel::internal::PlanMove(from.status, op.op);
    if (!move.to) {
      continue;
    }
    for (const AnswerName& answer : kAnswers) {
      if (varnel::internal::NextStatus(from.status, op.op, answer.answer) != move.to) {
        return std::nullopt;
      }
    }
    if (same &&
        (move.to != same->to || move.prelude != same->prelude || move.silent != same->silent)) {
      return std::nullopt;
    }
    same = move;
    ++moving;
  }
  return moving + 2 >= std::size(kStatuses) ? same : std::nullopt;
}

// ", not in E_Query" for the statuses where op does nothing.
std::string Exceptions(const OpName& op) {
  std::string text;
  for (const StatusName& from : kStatuses) {
    if (!varnel::internal::PlanMove(from.status, op.op).to) {
      text += std::string(text.empty() ? " (not in " : ", ") + from.name;
    }
  }
  return text.empty() ? text : text + ")";
}

std::string Label(const OpName& op, Enum_EditStatus from, const AnswerName& answer, bool silent) {
  std::string label = op.name;
  if (op.answered && varnel::internal::AsksClient(from)) {
    label += std::string(": ") + answer.name;
  }
  return label + (silent ? " (silently)" : "");
}

int StatusIndex(Enum_EditStatus status) {
  int index = 0;
  while (kStatuses[index].status != status) {
    ++index;
  }
  return index;
}

// The arrows of the table, from = -1 standing for any status. A move that
// stays in its status is drawn only when something runs first (a save), which
// is then what the operation does.
std::map<Arrow, std::vector<std::string>> Arrows(std::vector<Arrow>& order) {
  std::map<Arrow, std::vector<std::string>> arrows;
  const auto add = [&](const Arrow& arrow, const std::string& label) {
    if (arrows.find(arrow) == arrows.end()) {
      order.push_back(arrow);
    }
    AddLabel(arrows[arrow], label);
  };
  std::vector<const OpName*> per_status;  // the operations drawn from each status
  for (const OpName& op : kOps) {
    if (const auto move = SameFromEveryStatus(op)) {
      add({-1, StatusIndex(*move->to), move->prelude},
          Label(op, *move->to, kAnswers[0], move->silent) + Exceptions(op));
    } else {
      per_status.push_back(&op);
    }
  }
  for (int from = 0; from < static_cast<int>(std::size(kStatuses)); ++from) {
    for (const OpName* each : per_status) {
      const OpName& op = *each;
      const varnel::internal::EditMove move =
          varnel::internal::PlanMove(kStatuses[from].status, op.op);
      for (const AnswerName& answer : kAnswers) {
        const std::optional<Enum_EditStatus> to =
            varnel::internal::NextStatus(kStatuses[from].status, op.op, answer.answer);
        if (!to || (*to == kStatuses[from].status && move.prelude == Prelude::kNone)) {
          continue;
        }
        add({from, StatusIndex(*to), move.prelude},
            Label(op, kStatuses[from].status, answer, move.silent));
      }
    }
  }
  return arrows;
}

const char* NodeName(int index) { return index < 0 ? "any" : kStatuses[index].name; }

}  // namespace

int main() {
  std::cout << "// The edit status, generated by docs/edit_status_graph.cpp from the\n"
               "// transition table of src/recordset/edit_state.cpp: do not edit.\n"
               "// Dashed: the pending edit is saved first; dotted: the unsaved removed row is\n"
               "// dropped first. A change that stays in its state is not drawn. An operation\n"
               "// that makes the same move from every status is drawn once, from \"any status\".\n"
               "digraph edit_status {\n"
               "  rankdir=LR;\n"
               "  node [shape=box, style=rounded, fontname=\"Helvetica\", fontsize=10];\n"
               "  edge [fontname=\"Helvetica\", fontsize=8];\n"
               "  E_Nothing [style=\"rounded,dashed\"];\n"
               "  E_Default [style=\"rounded,bold\"];\n"
               "  any [label=\"any status\", shape=plaintext];\n";
  std::vector<Arrow> order;
  const std::map<Arrow, std::vector<std::string>> arrows = Arrows(order);
  for (const Arrow& arrow : order) {
    const auto& [from, to, prelude] = arrow;
    std::cout << "  " << NodeName(from) << " -> " << kStatuses[to].name << " [label=\""
              << Joined(arrows.at(arrow)) << "\"" << Style(prelude) << "];\n";
  }
  std::cout << "}\n";
  return std::cout.good() ? 0 : 1;
}
