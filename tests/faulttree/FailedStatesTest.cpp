#include <gmock/gmock.h>

#include <regex>
#include <string>
#include <vector>

#include "analysis/FaultTree.h"
#include "app/Config.h"
#include "app/DiagnosticLog.h"
#include "faulttree/GotoNode.h"
#include "model/Component.h"
#include "model/Implementation.h"
#include "model/Model.h"
#include "model/Perspective.h"
#include "model/StateMachine.h"
#include "model/Subsystem.h"
#include "support/CapturedStreams.h"
#include "support/CaseName.h"
#include "support/LogicText.h"
#include "support/ModelXml.h"
#include "support/ProcessStateTest.h"
#include "support/StateMachineXml.h"
#include "support/ThrownMessage.h"

namespace FTS {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class FailedStatesTest : public ProcessStateTest {
 protected:
  /// The logic of the state as built, before anything in it is resolved; "unreached: " in front
  /// when no start leads there.
  static std::string LogicAsBuilt(const std::string& sketch, const std::string& state) {
    const auto model = LoadModel(XmlStateModel(sketch));
    for (const auto& [name, perspective] : model->perspectives) {
      perspective->rootSubsystem->BuildPortExpressions();
      perspective->rootSubsystem->Instantiate();
    }
    model->stateMachine->Link(*model);
    const auto target = model->stateMachine->states.at(state);
    const auto proxy = std::make_shared<StateProxy>("top", model.get(), target);
    const bool reached = target->BuildFailLogic(*model, *proxy);
    return (reached ? "" : "unreached: ") + StructureText(proxy);
  }

  static std::unique_ptr<Model> Synthesised(const std::string& xml) {
    auto model = LoadModel(xml);
    const CapturedStreams streams;
    model->Synthesise();
    return model;
  }

  /// One line for each tree: what was lost, and the cut sets.
  static std::string TreesAndCutSets(Model& model) {
    const CapturedStreams streams;
    model.Analyse(Config::Instance().useBDDs);
    std::string text;
    for (const auto& tree : model.faultTrees) {
      text += tree->GetName() + " = " + CutSetsOf(model, tree->GetName()) + "\n";
    }
    return text;
  }
  static std::string CutSetsOfMachine(const std::string& sketch) {
    return TreesAndCutSets(*Synthesised(XmlStateModel(sketch)));
  }

  static std::string Source(const std::string& name) {
    return XmlLeaf(name, {"out"}, {{XmlEvent("dead")}, {XmlDeviation("Omission-out", "dead")}});
  }

  static std::string WhatLinkingThrows(const std::string& xml) {
    const auto model = LoadModel(xml);
    const CapturedStreams streams;
    return ThrownMessage([&] { model->Synthesise(); });
  }
};

// Which route is taken.

TEST_F(FailedStatesTest, HazardsAreTheTopEventsOfAModelWithoutFailedStates) {
  const auto model =
      Synthesised(XmlModel({XmlHazard("H", "Omission-A.out")},
                           XmlSystem({Source("A")}, {}) + XmlStateMachine("*ok A>nowhere; worn")));
  EXPECT_EQ(TreesAndCutSets(*model), "H = A.dead\n");
}

TEST_F(FailedStatesTest, SystemOutputsAreTheTopEventsOfAModelWithTheDefaultStateAlone) {
  const auto model = Synthesised(XmlModel(
      {},
      XmlSystem({XmlLeaf("A", {"out"},
                         {{XmlEvent("dead")},
                          {XmlDeviation("Omission-out", "dead", Xml("SystemOutport", "true"))}})},
                {})));
  ASSERT_THAT(model->stateMachine->states, SizeIs(1));
  EXPECT_EQ(TreesAndCutSets(*model), "Omission-DEFAULT::A.out = A.dead\n");
}

TEST_F(FailedStatesTest, FailedStatesGoBeforeHazards) {
  const auto model =
      Synthesised(XmlModel({XmlHazard("H", "Omission-A.out")},
                           XmlSystem({Source("A")}, {}) + XmlStateMachine("*ok A>down; !down")));
  EXPECT_EQ(TreesAndCutSets(*model), "Failed State: loss of down = A.dead\n");
}

// Linking.

TEST_F(FailedStatesTest, TransitionToAnUnknownStateEndsTheSynthesis) {
  EXPECT_EQ(WhatLinkingThrows(XmlStateModel("*ok A>nowhere; !down")),
            "Missing destination state 'nowhere in transition by A in state ok");
}

TEST_F(FailedStatesTest, CauseAtAnUnknownPortEndsTheSynthesis) {
  EXPECT_EQ(WhatLinkingThrows(XmlStateModel("*ok Omission-A.none>down A>down; !down")),
            "Cannot find output deviation 'Omission-A.none in transition by Omission-A.none in "
            "state ok - missing port.");
}

TEST_F(FailedStatesTest, CauseInAnUnknownComponentEndsTheSynthesis) {
  EXPECT_EQ(WhatLinkingThrows(XmlStateModel("*ok Omission-B.out>down A>down; !down")),
            "Cannot find output deviation 'Omission-B.out in transition by Omission-B.out in "
            "state ok - missing port.");
}

TEST_F(FailedStatesTest, CauseOfAnUnknownClassEndsTheSynthesis) {
  EXPECT_EQ(WhatLinkingThrows(XmlStateModel("*ok Late-A.out>down A>down; !down")),
            "Cannot find output deviation 'Late-A.out in transition by Late-A.out in state ok - no "
            "output deviation of that class in the port.");
}

TEST_F(FailedStatesTest, TransitionsThatLeadToNoFailedStateAreLinkedToo) {
  EXPECT_EQ(WhatLinkingThrows(XmlStateModel("*ok A>down; !down A>nowhere")),
            "Missing destination state 'nowhere in transition by A in state down");
}

TEST_F(FailedStatesTest, LinkingFillsBothEnds) {
  const auto model = Synthesised(XmlStateModel("*ok A>down; !down"));
  const auto& states = model->stateMachine->states;
  const auto transition = states.at("ok")->transitions.at(0);
  EXPECT_EQ(transition->destination, states.at("down"));
  EXPECT_THAT(states.at("down")->incoming, ElementsAre(transition));
  EXPECT_NE(transition->deviation, nullptr);
}

TEST_F(FailedStatesTest, LinkingAgainDoublesNothing) {
  const auto model = Synthesised(XmlStateModel("*ok A>down; !down"));
  model->stateMachine->Link(*model);
  EXPECT_THAT(model->stateMachine->states.at("down")->incoming, SizeIs(1));
}

// Building.

struct LogicCase {
  const char* name;
  const char* machine;
  const char* logic;  ///< Of state "f".
};

class FailedStateLogicTest : public FailedStatesTest,
                             public ::testing::WithParamInterface<LogicCase> {};

TEST_P(FailedStateLogicTest, IsBuiltBackwardsFromTheFailedState) {
  const CapturedStreams streams;
  EXPECT_EQ(LogicAsBuilt(GetParam().machine, "f"), GetParam().logic);
}

INSTANTIATE_TEST_SUITE_P(
    Machines, FailedStateLogicTest,
    ::testing::Values(
        LogicCase{"OneWay", "*s A>f; !f", "State(And(State: s, Or(dead)))"},
        LogicCase{"TwoSteps", "*s A>m; m B>f; !f",
                  "State(And(State(And(State: s, Or(dead))), Or(dead)))"},
        LogicCase{"TwoWaysAreAnOr", "*s A>f B>f; !f",
                  "State(Or(And(State: s, Or(dead)), And(State: s, Or(dead))))"},
        LogicCase{"StartThatHasFailed", "*!f", "top"},
        LogicCase{"StartNeedsNoWayFromAnother", "*s A>f; *!f", "top"},
        LogicCase{"StartNeedsNoWayFromTwoOthers", "*s A>f; *t B>f; *!f", "top"},
        LogicCase{"WayBackIsLeftOut", "*s A>a; a B>b C>f; b D>a; !f",
                  "State(And(State(Or(And(State: s, Or(dead)))), Or(dead)))"},
        LogicCase{"WayToItselfIsLeftOut", "*s A>f; !f B>f", "State(Or(And(State: s, Or(dead))))"},
        LogicCase{"RepairToTheStart", "*s A>a; a B>s C>f; !f",
                  "State(And(State(And(State: s, Or(dead))), Or(dead)))"},
        LogicCase{"OnlyAWayFromItself", "*s A>a; a; !f B>f", "unreached: top"},
        LogicCase{"NoWayAtAll", "*s; !f", "unreached: top"},
        LogicCase{"LeafBesideTheWay", "*s A>f; x B>f; !f", "State(Or(And(State: s, Or(dead))))"},
        LogicCase{"LeavesAlone", "x A>f; y B>f; !f", "unreached: State(State: f)"},
        LogicCase{"SharedPredecessor", "*s A>a; a B>b C>c; b D>f; c E>f; !f",
                  "State(Or(And(State(And(State(And(State: s, Or(dead))), Or(dead))), Or(dead)), "
                  "And(State(And(State(And(State: s, Or(dead))), Or(dead))), Or(dead))))"}),
    CaseName);

TEST_F(FailedStatesTest, LogicNamesTheStatesOnTheWay) {
  const auto model = Synthesised(XmlStateModel("*ok A>down B>down; !down"));
  const auto root = model->faultTrees.at(0)->root;
  root->SetCurrentState(DefaultState);
  EXPECT_EQ(LogicText(root),
            "State'Failed State: loss of down'(Or'State: down'("
            "And''(State'State: ok', Or'Omission-DEFAULT::A.out'(FailureMode'dead')), "
            "And''(State'State: ok', Or'Omission-DEFAULT::B.out'(FailureMode'dead'))))");
}

TEST_F(FailedStatesTest, StateOnTwoWaysIsBuiltOnceForEach) {
  const auto model = Synthesised(XmlStateModel("*s A>a; a B>f C>f; !f"));
  const auto root = model->faultTrees.at(0)->root;
  root->SetCurrentState(DefaultState);
  const auto either = root->GetChild(0);
  ASSERT_EQ(either->GetChildCount(), 2);
  const auto first = either->GetChild(0)->GetChild(0);
  const auto second = either->GetChild(1)->GetChild(0);
  EXPECT_EQ(first->name, "State: a");
  EXPECT_EQ(second->name, "State: a");
  EXPECT_NE(first, second);
}

TEST_F(FailedStatesTest, EachVisitOfALeafThatIsNoStartIsToldOnce) {
  const auto model = Synthesised(XmlStateModel("x A>a D>f; a B>f; y C>f; !f"));
  const std::string text = "State machine contains a leaf state that is not the starting state: ";
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre(text + "x", text + "x", text + "y"));
}

TEST_F(FailedStatesTest, StateThatOnlyLeadsToItselfMakesNoTreeAndNoMessage) {
  const auto model = Synthesised(XmlStateModel("*s; !f A>f"));
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

TEST_F(FailedStatesTest, MarksOfTheWalkAreGoneAfterwards) {
  const auto model = Synthesised(XmlStateModel("*s A>a; a B>b C>f; b D>a E>f; !f F>s"));
  for (const auto& [name, state] : model->stateMachine->states) {
    EXPECT_FALSE(state->visiting) << name;
  }
  EXPECT_THAT(model->stateStack, SizeIs(1));
}

TEST_F(FailedStatesTest, CauseWithoutLogicEndsItsWay) {
  const auto model = Synthesised(XmlModel(
      {}, XmlSystem({XmlLeaf("A", {"out"}, {{}, {XmlDeviation("Omission-out", "")}}), Source("B")},
                    {}) +
              XmlStateMachine("*s A>f B>f; !f A>g; !g")));
  EXPECT_EQ(TreesAndCutSets(*model), "Failed State: loss of f = B.dead\n");
  const std::string first = "Nothing causes the transition by A in state ";
  const std::string last = ": Omission-A.out has no logic.";
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(),
              ElementsAre(first + "s" + last, first + "s" + last, first + "f" + last));
}

// Trees.

TEST_F(FailedStatesTest, TreesStandInTheOrderOfReading) {
  EXPECT_EQ(CutSetsOfMachine("!z; *s A>a B>z; !a"),
            "Failed State: loss of z = B.dead\nFailed State: loss of a = A.dead\n");
}

TEST_F(FailedStatesTest, TreeIsNamedByWhatIsLostAndHasNoSeverity) {
  const auto model = Synthesised(XmlStateModel("*s A>f; !f"));
  ASSERT_EQ(model->GetFaultTreeCount(), 1);
  const FaultTree& tree = *model->faultTrees[0];
  EXPECT_EQ(tree.GetName(), "Failed State: loss of f");
  EXPECT_EQ(tree.label, "");
  EXPECT_EQ(tree.severity, -1.0);
  EXPECT_EQ(tree.source.lock(), nullptr);
}

TEST_F(FailedStatesTest, FailedStateOnTheWayToAnotherHasATreeOfItsOwn) {
  EXPECT_EQ(CutSetsOfMachine("*s A>f; !f B>g; !g"),
            "Failed State: loss of f = A.dead\nFailed State: loss of g = A.dead*B.dead\n");
}

TEST_F(FailedStatesTest, UnreachedStateLeavesTheOthersTheirTrees) {
  EXPECT_EQ(CutSetsOfMachine("!u; *s A>f; !f"), "Failed State: loss of f = A.dead\n");
}

TEST_F(FailedStatesTest, FailedStartHasATreeWithoutCutSets) {
  EXPECT_EQ(CutSetsOfMachine("*!f A>g; g B>f"), "Failed State: loss of f = \n");
}

TEST_F(FailedStatesTest, RepairChangesNothingInTheCutSets) {
  EXPECT_EQ(CutSetsOfMachine("*s A>a B>b; a C>f R>s; b D>f R>s; !f R>s"),
            "Failed State: loss of f = A.dead*C.dead + B.dead*D.dead\n");
}

TEST_F(FailedStatesTest, WaysThatAreLongerWithoutNeedAreAbsorbed) {
  EXPECT_EQ(CutSetsOfMachine("*s A>f B>a; a A>f C>f; !f"),
            "Failed State: loss of f = A.dead + B.dead*C.dead\n");
}

TEST_F(FailedStatesTest, EmptyStateProxyIsTakenOutWithoutAWord) {
  CutSetsOfMachine("*s A>f; !f");
  EXPECT_THAT(DiagnosticLog::Instance().Warnings(), IsEmpty());
}

// Life cycle.

class FailedStateLifeCycleTest : public FailedStatesTest {
 protected:
  static constexpr const char* Sketch = "*s A>a B>b; a C>f R>s; !f C>b; !b D>f A>a";
  static constexpr const char* Trees =
      "Failed State: loss of f = A.dead*C.dead + B.dead*D.dead\n"
      "Failed State: loss of b = A.dead*C.dead + B.dead\n";
};

TEST_F(FailedStateLifeCycleTest, SynthesisAfterClearingGivesTheSameTrees) {
  const auto model = Synthesised(XmlStateModel(Sketch));
  const std::string first = TreesAndCutSets(*model);
  model->ClearSynthesis();
  EXPECT_EQ(model->GetFaultTreeCount(), 0);
  const CapturedStreams streams;
  model->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*model), first);
}

TEST_F(FailedStateLifeCycleTest, CloneHasTheSameTrees) {
  const auto model = LoadModel(XmlStateModel(Sketch));
  const auto copy = model->Clone();
  const CapturedStreams streams;
  copy->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*copy), Trees);
}

TEST_F(FailedStateLifeCycleTest, CloneOfASynthesisedModelHasTheSameTrees) {
  const auto model = Synthesised(XmlStateModel(Sketch));
  const auto copy = model->Clone();
  const CapturedStreams streams;
  copy->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*copy), Trees);
  EXPECT_EQ(TreesAndCutSets(*model), Trees);
}

TEST_F(FailedStateLifeCycleTest, CloneOutlivesItsSource) {
  auto model = Synthesised(XmlStateModel(Sketch));
  const auto copy = model->Clone();
  model.reset();
  const CapturedStreams streams;
  copy->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*copy), Trees);
}

TEST_F(FailedStateLifeCycleTest, FailureWhileLinkingLeavesTheModelUsable) {
  const auto model = LoadModel(XmlStateModel("*s A>f; !f B>nowhere"));
  const CapturedStreams streams;
  EXPECT_THROW(model->Synthesise(), VtnException);
  model->ClearSynthesis();
  model->stateMachine->states.at("f")->transitions.clear();
  model->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*model), "Failed State: loss of f = A.dead\n");
}

// Resolution.

/// A sensor S and a relay R that passes on what S does; the logic of both is the test's.
class FailedStateResolutionTest : public FailedStatesTest {
 protected:
  static std::string TreesOf(const std::string& sensorLogic, const std::string& relayLogic,
                             const std::string& machine) {
    const auto model =
        Synthesised(XmlModel({}, XmlSystem({XmlLeaf("S", {"out"},
                                                    {{XmlEvent("a"), XmlEvent("b"), XmlEvent("c")},
                                                     {XmlDeviation("Omission-out", sensorLogic)}}),
                                            XmlLeaf("R", {"in", "out"},
                                                    {{XmlEvent("x"), XmlEvent("y")},
                                                     {XmlDeviation("Omission-out", relayLogic)}})},
                                           {XmlWire("S.out", "R.in")}) +
                                     XmlStateMachine(machine)));
    return TreesAndCutSets(*model);
  }
};

TEST_F(FailedStateResolutionTest, CauseHasTheLogicOfTheStateItLeaves) {
  EXPECT_EQ(TreesOf("{s: a, m: b, f: c}", "x", "*s S>m; m S>f; !f"),
            "Failed State: loss of f = S.a*S.b\n");
}

TEST_F(FailedStateResolutionTest, WhatTheCauseDependsOnCountsInTheStateItLeadsTo) {
  EXPECT_EQ(TreesOf("{s: a, m: b, f: c}", "Omission-in", "*s R>m; m R>f; !f"),
            "Failed State: loss of f = S.b*S.c\n");
}

TEST_F(FailedStateResolutionTest, OneCauseOfTwoTransitionsCountsInTheStateEachLeadsTo) {
  // To f at once, or to m, from where the relay alone leads on.
  EXPECT_EQ(TreesOf("{s: a, m: b, f: c}", "{s: Omission-in, m: x}", "*s R>m R>f; m R>f; !f"),
            "Failed State: loss of f = R.x*S.b + S.c\n");
}

TEST_F(FailedStateResolutionTest, StateWithoutLogicOfItsOwnHasTheDefault) {
  EXPECT_EQ(TreesOf("{default: a, f: b}", "{m: x + Omission-in, default: y * Omission-in}",
                    "*s R>m; m R>f; !f"),
            "Failed State: loss of f = R.x*R.y*S.a + R.y*S.a*S.b\n");
}

TEST_F(FailedStateResolutionTest, DefaultOfSeveralStatesIsOneSetOfEvents) {
  EXPECT_EQ(TreesOf("a", "x + Omission-in", "*s R>m; m R>n; n R>f; !f"),
            "Failed State: loss of f = R.x + S.a\n");
}

TEST_F(FailedStateResolutionTest, StateThatIsNotListedHasNoDeviation) {
  EXPECT_EQ(ThrownMessage([] { TreesOf("{m: a}", "x", "*s S>m; m S>f; !f"); }),
            "Cannot find output deviation 'Omission-S.out in transition by S in state s - no "
            "output deviation of that class in the port.");
}

TEST_F(FailedStateResolutionTest, LogicOfAnUnlistedStateBehindTheCauseIsAHole) {
  EXPECT_EQ(TreesOf("{s: a}", "x + Omission-in", "*s R>f; !f"), "Failed State: loss of f = R.x\n");
}

TEST_F(FailedStateResolutionTest, TreesOfSeveralFailedStatesEachHaveTheirOwn) {
  EXPECT_EQ(TreesOf("{default: a, f: b, g: c}", "{s: Omission-in * x, m: Omission-in * y}",
                    "*s S>m R>f; m R>g; !f; !g"),
            "Failed State: loss of f = R.x*S.b\nFailed State: loss of g = R.y*S.a*S.c\n");
}

TEST_F(FailedStateResolutionTest, InsideOfTheCauseCountsInTheStateItLeadsToAsWell) {
  const auto sensor = [](const std::string& name) {
    return XmlLeaf(
        name, {"out"},
        {{XmlEvent("a"), XmlEvent("b")}, {XmlDeviation("Omission-out", "{s: a, m: b}")}});
  };
  const std::string box =
      XmlBlock("Box", {"in", "out"}, "Both",
               {{XmlEvent("own")}, {XmlDeviation("Omission-out", "own * Omission-in")}},
               XmlSystem({sensor("Inner")}, {XmlWire("Inner.out", "out")}));
  const std::string system = XmlSystem({sensor("S"), box}, {XmlWire("S.out", "Box.in")});
  const auto model = Synthesised(XmlModel({}, system + XmlStateMachine("*s Box>m; m S>f; !f")));
  EXPECT_EQ(TreesAndCutSets(*model), "Failed State: loss of f = Box.own*S.b + Inner.b*S.b\n");
}

struct InsideCase {
  const char* name;
  const char* blockType;
  const char* cutSets;
};

class FailedStateInsideTest : public FailedStatesTest,
                              public ::testing::WithParamInterface<InsideCase> {};

TEST_P(FailedStateInsideTest, JoinsTheInsideOfTheComponentToTheCause) {
  const std::string block =
      XmlBlock("Box", {"in", "out"}, GetParam().blockType,
               {{XmlEvent("own")}, {XmlDeviation("Omission-out", "own * Omission-in")}},
               XmlSystem({Source("Inner")}, {XmlWire("Inner.out", "out")}));
  const std::string system = XmlSystem({Source("A"), block}, {XmlWire("A.out", "Box.in")});
  const auto model =
      Synthesised(XmlModel({}, system + XmlStateMachine("*s Omission-Box.out>m; m A>f; !f")));
  EXPECT_EQ(TreesAndCutSets(*model),
            std::string("Failed State: loss of f = ") + GetParam().cutSets + "\n");
}

INSTANTIATE_TEST_SUITE_P(Types, FailedStateInsideTest,
                         ::testing::Values(InsideCase{"NotRefined", "NotRefined", "A.dead*Box.own"},
                                           InsideCase{"Both", "Both",
                                                      "A.dead*Box.own + A.dead*Inner.dead"}),
                         CaseName);

TEST_F(FailedStatesTest, RefinedCauseHasItsInsideAlone) {
  const auto model = LoadModel(XmlModel(
      {}, XmlSystem({XmlBlock("Box", {"out"}, "Both",
                              {{XmlEvent("own")}, {XmlDeviation("Omission-out", "own")}},
                              XmlSystem({Source("Inner")}, {XmlWire("Inner.out", "out")}))},
                    {}) +
              XmlStateMachine("*s Omission-Box.out>f; !f")));
  // Readers drop the annotation of a refined component; other makers of models may not.
  model->components.at("DEFAULT::Box")->GetCurrentImplementation().hBlockType = HBlockType::REFINED;
  const CapturedStreams streams;
  model->Synthesise();
  EXPECT_EQ(TreesAndCutSets(*model), "Failed State: loss of f = Inner.dead\n");
}

// Printing.

class FailedStatePrintingTest : public FailedStatesTest {
 protected:
  /// What the synthesis writes, with "#" for every id.
  static std::string Printed(const std::string& xml) {
    const auto model = LoadModel(xml);
    const CapturedStreams streams;
    model->Synthesise();
    static const std::regex Id("\\(-?[0-9]+\\)");
    return std::regex_replace(streams.Output(), Id, "(#)");
  }
};

TEST_F(FailedStatePrintingTest, ShowsTheLogicAsBuiltAndAsResolvedInSilentRunsToo) {
  Config::Instance().runSilent = true;
  const std::string top =
      "State: Failed State: loss of f(#) = 0 # default\n"
      "{\n"
      "  And: (#) = 0 # default\n"
      "  {\n"
      "    State: State: s(#) = 0 # default\n"
      "    Or: Omission-DEFAULT::R.out(#) = 0 # default\n"
      "    {\n"
      "      InputDeviation: Omission-DEFAULT::R.in(#) = 0 # default\n";
  const std::string resolved =
      "      {\n"
      "        OutputDeviation: Omission-DEFAULT::A.out(#) = 0 # default\n"
      "        {\n"
      "          Or: OR [Omission-DEFAULT::A.out](#) = 0 # default\n"
      "          {\n"
      "            Or: Omission-DEFAULT::A.out(#) = 0 # default\n"
      "            {\n"
      "              FailureMode: dead(#) = 0 # default\n"
      "            } \n"
      "          } \n"
      "        } \n"
      "      } \n";
  const std::string end =
      "    } \n"
      "  } \n"
      "} \n";
  EXPECT_EQ(
      Printed(XmlModel(
          {}, XmlSystem({Source("A"), XmlLeaf("R", {"in", "out"},
                                              {{}, {XmlDeviation("Omission-out", "Omission-in")}})},
                        {XmlWire("A.out", "R.in")}) +
                  XmlStateMachine("*s R>f; !f"))),
      top + end + top + resolved + end);
}

TEST_F(FailedStatePrintingTest, ShowsAnUnreachedStateOnce) {
  Config::Instance().runSilent = true;
  EXPECT_EQ(Printed(XmlStateModel("*s; !f")), "State: Failed State: loss of f(#) = 0 # default\n");
}

TEST_F(FailedStatePrintingTest, ShowsTheEmptyRestOfWaysThatAllFailed) {
  Config::Instance().runSilent = true;
  EXPECT_EQ(Printed(XmlStateModel("*s; x A>f; y B>f; !f")),
            "State: Failed State: loss of f(#) = 0 # default\n"
            "{\n"
            "  Or: State: f(#) = 0 # default\n"
            "} \n");
}

TEST_F(FailedStatePrintingTest, ShowsAFailedStartTwice) {
  Config::Instance().runSilent = true;
  const std::string line = "State: Failed State: loss of f(#) = 0 # default\n";
  EXPECT_EQ(Printed(XmlStateModel("*!f")), line + line);
}

}  // namespace
}  // namespace FTS
