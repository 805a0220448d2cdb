#include "support/ModelGenerators.h"

#include <cmath>
#include <utility>
#include <vector>

#include "support/SketchText.h"

namespace FTS {
namespace {

const char* const Class = "Omission";
constexpr double EventFigure = 0.001;  // Of every event.

/// 1 - (1 - q)^n, without the loss of digits that the plain form has for small q.
double AnyOfMany(double q, double n) { return -std::expm1(n * std::log1p(-q)); }

/// Builds the sketch of one perspective with one hazard.
class GeneratorSketch {
 public:
  explicit GeneratorSketch(const std::string& name) {
    model.sketch.name = name;
    model.sketch.AddPerspective("DEFAULT");
  }

  int Top() const { return model.sketch.perspectives[0].system; }

  /// A component with one output "out" and the deviation that `logic` gives.
  int Add(int system, const std::string& name, std::vector<std::string> inputs,
          std::vector<std::string> events, SketchLogic logic) {
    inputs.emplace_back("out");
    const int component = model.sketch.AddComponent(system, name, std::move(inputs));
    SketchComponent& added = model.sketch.components[component];
    for (std::string& event : events) added.events.push_back({std::move(event), EventFigure});
    SketchDeviation deviation;
    deviation.failureClass = Class;
    deviation.port = "out";
    deviation.causes.push_back(std::move(logic));
    added.deviations.push_back(std::move(deviation));
    return component;
  }

  struct End {
    int component;
    std::string port;
  };

  /// A directed line from one port to others. A port of the enclosing component stands for itself.
  void Connect(int system, const End& source, const std::vector<End>& sinks) {
    SketchLine line;
    line.connections.push_back({source.component, source.port, "", Placeholder("OUTPUTPORT")});
    for (const End& sink : sinks) {
      line.connections.push_back({sink.component, sink.port, "", Placeholder("ORPORT")});
    }
    model.sketch.systems[system].lines.push_back(std::move(line));
  }

  ModelSketch& Sketch() { return model.sketch; }

  GeneratedModel Finish(SketchLogic hazard, int order, std::size_t sets) {
    model.sketch.hazards.push_back({"Top", {std::move(hazard)}});
    model.setsByOrder[order] = sets;
    model.unavailability = AnyOfMany(std::pow(EventFigure, order), static_cast<double>(sets));
    return std::move(model);
  }

 private:
  GeneratedModel model;
};

SketchLogic Own(const std::string& event, SketchLogic inputs) {
  return OrLogic({EventLogic(event), std::move(inputs)});
}

SketchLogic In(const std::string& port) { return InputLogic(Class, port); }

SketchLogic Out(int component) { return TopLogic(Class, component, "out"); }

SketchLogic TwoOutOfThree(const SketchLogic& a, const SketchLogic& b, const SketchLogic& c) {
  return OrLogic({AndLogic({a, b}), AndLogic({a, c}), AndLogic({b, c})});
}

/// Ten parts in a row within one component.
int AddGroup(GeneratorSketch& out, int number) {
  ModelSketch& sketch = out.Sketch();
  const std::string name = "G" + std::to_string(number);
  const int group = sketch.AddComponent(out.Top(), name, {"out"});
  const int inside = sketch.Refine(group);
  int before = -1;
  for (int i = 1; i <= 10; ++i) {
    const std::string event = "g" + std::to_string(number) + "_" + std::to_string(i);
    const std::string part = "P" + std::to_string(i);
    const bool first = before < 0;
    const int made = first ? out.Add(inside, part, {}, {event}, EventLogic(event))
                           : out.Add(inside, part, {"in"}, {event}, Own(event, In("in")));
    if (!first) out.Connect(inside, {before, "out"}, {{made, "in"}});
    before = made;
  }
  out.Connect(inside, {before, "out"}, {{group, "out"}});
  return group;
}

}  // namespace

std::string GeneratedModel::Xml() const { return SketchText(sketch); }

GeneratedModel Ladder(int layers) {
  GeneratorSketch out("ladder_" + std::to_string(layers));
  std::vector<int> before;
  for (int i = 1; i <= layers; ++i) {
    std::vector<int> layer;
    for (const std::string side : {"A", "B"}) {
      const std::string name = side + std::to_string(i);
      const std::string event = "f_" + name;
      const SketchLogic both = AndLogic({In("left"), In("right")});
      layer.push_back(i == 1
                          ? out.Add(out.Top(), name, {}, {event}, EventLogic(event))
                          : out.Add(out.Top(), name, {"left", "right"}, {event}, Own(event, both)));
    }
    if (i > 1) {
      out.Connect(out.Top(), {before[0], "out"}, {{layer[0], "left"}, {layer[1], "left"}});
      out.Connect(out.Top(), {before[1], "out"}, {{layer[0], "right"}, {layer[1], "right"}});
    }
    before = layer;
  }
  return out.Finish(AndLogic({Out(before[0]), Out(before[1])}), 2,
                    static_cast<std::size_t>(layers));
}

GeneratedModel Chain(int n) {
  GeneratorSketch out("chain_" + std::to_string(n));
  int before = -1;
  for (int i = 1; i <= n; ++i) {
    const std::string number = std::to_string(i);
    const std::string event = "f" + number;
    const bool first = i == 1;
    const int made = first
                         ? out.Add(out.Top(), "C" + number, {}, {event}, EventLogic(event))
                         : out.Add(out.Top(), "C" + number, {"in"}, {event}, Own(event, In("in")));
    if (!first) out.Connect(out.Top(), {before, "out"}, {{made, "in"}});
    before = made;
  }
  return out.Finish(Out(before), 1, static_cast<std::size_t>(n));
}

GeneratedModel TwoOrs(int a, int b) {
  GeneratorSketch out("two_ors_" + std::to_string(a) + "_" + std::to_string(b));
  std::vector<std::string> events;
  std::vector<SketchLogic> left;
  std::vector<SketchLogic> right;
  for (int i = 1; i <= a; ++i) {
    events.push_back("x" + std::to_string(i));
    left.push_back(EventLogic(events.back()));
  }
  for (int i = 1; i <= b; ++i) {
    events.push_back("y" + std::to_string(i));
    right.push_back(EventLogic(events.back()));
  }
  const SketchLogic logic = AndLogic({OrLogic(left), OrLogic(right)});
  const int component = out.Add(out.Top(), "System1", {}, events, logic);
  GeneratedModel model =
      out.Finish(Out(component), 2, static_cast<std::size_t>(a) * static_cast<std::size_t>(b));
  // A lone x or y is in all cut sets, and is taken out before they are multiplied up.
  if (a == 1) model.unavailability = EventFigure * AnyOfMany(EventFigure, b);
  if (b == 1) model.unavailability = EventFigure * AnyOfMany(EventFigure, a);
  if (a == 1 && b == 1) model.unavailability = EventFigure * EventFigure;
  return model;
}

GeneratedModel SharedVoters(int layers) {
  GeneratorSketch out("shared_voters_" + std::to_string(layers));
  std::vector<int> before;
  for (int i = 0; i <= layers; ++i) {
    std::vector<int> layer;
    for (int k = 1; k <= 3; ++k) {
      const std::string place = std::to_string(i) + "_" + std::to_string(k);
      const std::string event = "f" + place;
      const SketchLogic vote = TwoOutOfThree(In("in1"), In("in2"), In("in3"));
      layer.push_back(i == 0 ? out.Add(out.Top(), "S" + place, {}, {event}, EventLogic(event))
                             : out.Add(out.Top(), "V" + place, {"in1", "in2", "in3"}, {event},
                                       Own(event, vote)));
    }
    for (std::size_t k = 0; k < before.size(); ++k) {
      const std::string port = "in" + std::to_string(k + 1);
      out.Connect(out.Top(), {before[k], "out"},
                  {{layer[0], port}, {layer[1], port}, {layer[2], port}});
    }
    before = layer;
  }
  const SketchLogic top = TwoOutOfThree(Out(before[0]), Out(before[1]), Out(before[2]));
  return out.Finish(top, 2, 3 * (static_cast<std::size_t>(layers) + 1));
}

GeneratedModel OrOfAnds(int n) {
  GeneratorSketch out("or_of_ands_" + std::to_string(n));
  std::vector<SketchLogic> pairs;
  for (int i = 1; i <= n; ++i) {
    const std::string number = std::to_string(i);
    const SketchLogic both = AndLogic({EventLogic("a" + number), EventLogic("b" + number)});
    pairs.push_back(Out(out.Add(out.Top(), "D" + number, {}, {"a" + number, "b" + number}, both)));
  }
  GeneratedModel model = out.Finish(OrLogic(pairs), 2, static_cast<std::size_t>(n));
  return model;
}

GeneratedModel LargeModel(int megabytes) {
  const std::string name = "large_" + std::to_string(megabytes);
  const auto build = [&name](std::size_t groups) {
    GeneratorSketch out(name);
    const int first = AddGroup(out, 1);
    for (std::size_t i = 2; i <= groups; ++i) AddGroup(out, static_cast<int>(i));
    return out.Finish(Out(first), 1, 10);
  };
  const std::size_t one = build(1).Xml().size();
  const std::size_t perGroup = build(2).Xml().size() - one;
  const std::size_t wanted = static_cast<std::size_t>(megabytes) * 1000000;
  return build(wanted / perGroup + 1);
}

}  // namespace FTS
