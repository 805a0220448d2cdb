#include <gmock/gmock.h>

#include <stdexcept>

#include "faulttree/CircleNode.h"
#include "faulttree/CommonCauseNodes.h"
#include "faulttree/DeviationNodes.h"
#include "faulttree/FaultTreeGate.h"
#include "faulttree/GotoNode.h"
#include "faulttree/ProxyNode.h"
#include "model/CCF.h"
#include "model/StateMachine.h"
#include "platform/BigStack.h"
#include "support/CaseName.h"
#include "support/PartsModel.h"
#include "support/ProcessStateTest.h"
#include "support/RandomNodes.h"
#include "support/TreeBuilder.h"

namespace FTS {
namespace {

using Pointer = FaultTreeNode::Pointer;
using ::testing::ElementsAre;

/// Two models and nodes of the first.
class CloningTest : public ProcessStateTest {
 protected:
  Model& model = parts.model;
  Model& otherModel = otherParts.model;

  /// A clone with all states; the memo is cleared.
  template <typename Node>
  static std::shared_ptr<Node> CloneOf(const std::shared_ptr<Node>& source, Model* target,
                                       CloneMode mode,
                                       const std::shared_ptr<Component>& context = nullptr) {
    return std::static_pointer_cast<Node>(CloneTemplate(*source, target, mode, context));
  }

  PartsModel parts;
  PartsModel otherParts;
  TreeBuilder builder{&parts.model};
};

// Gates.

struct ModeCase {
  const char* name;
  CloneMode mode;
};

class CloneModeTest : public CloningTest, public ::testing::WithParamInterface<ModeCase> {};

TEST_P(CloneModeTest, CopyHasTheShapeOfItsSource) {
  const std::string text = "AND(G=OR(A, PROXY(B)), XOR(G, IN(C), NOT(A)), x=GOTO())";
  const auto source = builder.Tree(text);
  const auto copy = CloneOf(source, &model, GetParam().mode);
  EXPECT_NE(copy, source);
  EXPECT_EQ(ShapeOf(copy), text);
}

INSTANTIATE_TEST_SUITE_P(Modes, CloneModeTest,
                         ::testing::Values(ModeCase{"KeepIdentity", CloneMode::KeepIdentity},
                                           ModeCase{"NewIdentity", CloneMode::NewIdentity},
                                           ModeCase{"NewNodes", CloneMode::NewNodes}),
                         CaseName);

TEST_F(CloningTest, GatesAndProxiesKeepTheirIdInModeZeroOnly) {
  const auto source = builder.Tree("OR(PROXY(A))");
  const auto kept = CloneOf(source, &model, CloneMode::KeepIdentity);
  const auto renewed = CloneOf(source, &model, CloneMode::NewIdentity);
  const auto nodes = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(kept->GetId(), source->GetId());
  EXPECT_EQ(kept->GetChild(0)->GetId(), source->GetChild(0)->GetId());
  EXPECT_GT(renewed->GetId(), source->GetId());
  EXPECT_GT(nodes->GetId(), renewed->GetId());
  EXPECT_GT(nodes->GetChild(0)->GetId(), renewed->GetId());
}

TEST_F(CloningTest, NodeOfTwoParentsIsClonedOnce) {
  const auto source = builder.Tree("AND(G=OR(A), XOR(G, B))");
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(copy->GetChild(0), copy->GetChild(1)->GetChild(0));
}

TEST_F(CloningTest, SecondCloneWithoutClearingIsTheFirst) {
  const auto source = builder.Tree("AND(A, OR(B))");
  const auto first = source->Clone(&model, CloneMode::NewNodes, true, nullptr);
  EXPECT_EQ(source->Clone(&model, CloneMode::NewNodes, true, nullptr), first);
  ClearClones(*source);
  EXPECT_NE(source->Clone(&model, CloneMode::NewNodes, true, nullptr), first);
  ClearClones(*source);
}

TEST_F(CloningTest, CopyWithoutStatesHasNoChildren) {
  const auto gate = builder.Tree("OR(A)")->Clone(&model, CloneMode::NewNodes, false, nullptr);
  const auto proxy = builder.Tree("PROXY(A)")->Clone(&model, CloneMode::NewNodes, false, nullptr);
  EXPECT_EQ(ShapeOf(gate), "OR()");
  EXPECT_EQ(ShapeOf(proxy), "PROXY()");
}

TEST_F(CloningTest, EmptyProxyIsClonedAsAnEmptyProxyOfANewId) {
  const auto source = builder.Tree("P=PROXY()");
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(ShapeOf(copy), "P=PROXY()");
  EXPECT_NE(copy->GetId(), source->GetId());
}

TEST_F(CloningTest, AllStatesAreCopiedAndTheCurrentOneSelected) {
  const auto source = builder.Tree("OR(A, PROXY(B))");
  source->CopyChildrenToState("contracted");
  source->RemoveChild(*builder.Node("A"));
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(ShapeOf(copy), "OR(PROXY(B))");
  EXPECT_EQ(copy->state, "contracted");
  EXPECT_EQ(copy->GetChild(0)->state, "contracted");
  copy->SetCurrentState("default");
  EXPECT_EQ(ShapeOf(copy), "OR(A, PROXY(B))");
}

TEST_F(CloningTest, DescriptionAndModelGoAlong) {
  const auto source = builder.Tree("T=OR(P=PROXY(A))");
  source->description = "top";
  source->GetChild(0)->description = "below";
  const auto copy = CloneOf(source, &otherModel, CloneMode::NewNodes);
  EXPECT_EQ(copy->name, "T");
  EXPECT_EQ(copy->description, "top");
  EXPECT_EQ(copy->GetChild(0)->description, "below");
  EXPECT_EQ(copy->model, &otherModel);
  EXPECT_EQ(copy->GetChild(0)->model, &otherModel);
}

TEST_F(CloningTest, CopyIsNeitherResolvedNorDead) {
  const auto source = builder.Tree("OR(A)");
  source->resolved = true;
  source->contradictory = true;
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_FALSE(copy->resolved);
  EXPECT_FALSE(copy->contradictory);
}

TEST_F(CloningTest, LoopIsClonedAsALoop) {
  const ScopedGraph source(builder.Tree("G=OR(A, AND(B, PROXY(G)))"));
  const ScopedGraph copy(CloneOf(source.Get(), &model, CloneMode::NewNodes));
  EXPECT_EQ(ShapeOf(*copy), "G=OR(A, AND(B, PROXY(G)))");
  EXPECT_EQ(copy->GetChild(1)->GetChild(1)->GetChild(0), copy.Get());
}

TEST_F(CloningTest, CircleOfTheSameModelIsShared) {
  const auto source = builder.Tree("G=OR(A, B)");
  source->circle = std::make_shared<CircleNode>(*source, &model);
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(copy->circle, source->circle);
}

TEST_F(CloningTest, CircleForAnotherModelKeepsItsSizeAndIdentity) {
  const auto source = builder.Tree("G=OR(A, B)");
  source->circle = std::make_shared<CircleNode>(*source, &model);
  source->circle->loopChildren[1] = true;
  const auto copy = CloneOf(source, &otherModel, CloneMode::KeepIdentity);
  ASSERT_NE(copy->circle, source->circle);
  EXPECT_EQ(copy->circle->GetId(), source->circle->GetId());
  EXPECT_EQ(copy->circle->prime, source->circle->prime);
  EXPECT_EQ(copy->circle->name, "CIRCLE TO G");
  EXPECT_THAT(copy->circle->loopChildren, ElementsAre(false, false));
  EXPECT_EQ(source->circle->clone, nullptr);
}

TEST_F(CloningTest, CircleInModeOneIsANewOne) {
  const auto source = builder.Tree("PROXY(A)");
  source->circle = std::make_shared<CircleNode>(*source, &model);
  const auto copy = CloneOf(source, &model, CloneMode::NewIdentity);
  EXPECT_NE(copy->circle->GetId(), source->circle->GetId());
  EXPECT_NE(copy->circle->prime, source->circle->prime);
}

// Clearing.

TEST_F(CloningTest, ClearingReachesAllStates) {
  const auto source = builder.Tree("OR(G=AND(A), P=PROXY(H=AND(B)))");
  source->CopyChildrenToState("contracted");
  source->ClearChildren();
  builder.Node("P")->ClearChildren();
  source->Clone(&model, CloneMode::NewNodes, true, nullptr);
  ASSERT_NE(builder.Node("G")->clone, nullptr);
  ClearClones(*source);
  for (const char* name : {"G", "P", "H"}) EXPECT_EQ(builder.Node(name)->clone, nullptr) << name;
  EXPECT_EQ(source->clone, nullptr);
}

class ThrowingEvent : public BasicEvent {
 public:
  using BasicEvent::BasicEvent;
  Pointer Clone(Model* /*target*/, CloneMode /*mode*/, bool /*copyStates*/,
                const std::shared_ptr<Component>& /*context*/) override {
    throw std::runtime_error("no clone");
  }
};

TEST_F(CloningTest, TemplateIsClearedWhenACloneThrows) {
  builder.Define("bad", std::make_shared<ThrowingEvent>("bad", &model, true));
  const auto source = builder.Tree("OR(G=AND(A), bad)");
  EXPECT_THROW(CloneTemplate(*source, &model, CloneMode::NewNodes), std::runtime_error);
  EXPECT_EQ(source->clone, nullptr);
  EXPECT_EQ(builder.Node("G")->clone, nullptr);
}

// Events.

TEST_F(CloningTest, EventOfTheModelStaysItself) {
  const auto source = builder.Tree("OR(A, B)");
  for (const CloneMode mode : {CloneMode::KeepIdentity, CloneMode::NewNodes}) {
    const auto copy = source->Clone(&model, mode, true, nullptr);
    EXPECT_EQ(copy->GetChild(0), builder.Node("A"));
    EXPECT_EQ(builder.Node("A")->clone, nullptr);
    ClearClones(*source);
  }
}

TEST_F(CloningTest, EventInModeOneHasANewIdentity) {
  const auto source = builder.Tree("OR(A, AND(A))");
  const auto copy = CloneOf(source, &model, CloneMode::NewIdentity);
  const auto& old = *builder.Event("A");
  const auto& event = static_cast<const BasicEvent&>(*copy->GetChild(0));
  EXPECT_NE(&event, &old);
  EXPECT_NE(event.GetId(), old.GetId());
  EXPECT_EQ(event.prime, 5.0);
  EXPECT_EQ(event.eventNumber, 2U);
  EXPECT_EQ(copy->GetChild(1)->GetChild(0).get(), &event);
}

TEST_F(CloningTest, EventForAnotherModelKeepsItsIdentity) {
  builder.Tree("OR(A, B)");
  const auto source = builder.Event("B");
  for (const CloneMode mode : {CloneMode::KeepIdentity, CloneMode::NewNodes}) {
    const auto copy = CloneOf(source, &otherModel, mode);
    EXPECT_NE(copy, source);
    EXPECT_EQ(copy->GetId(), source->GetId());
    EXPECT_EQ(copy->prime, source->prime);
    EXPECT_EQ(copy->eventNumber, source->eventNumber);
    EXPECT_EQ(copy->model, &otherModel);
  }
}

TEST_F(CloningTest, CloneForAnotherModelTakesNoPrime) {
  const auto source = builder.Tree("OR(A, B)");
  CloneOf(source, &otherModel, CloneMode::NewNodes);
  EXPECT_EQ(BasicEvent("next", &model, true).prime, 7.0);
}

class EventDataTest : public CloningTest, public ::testing::WithParamInterface<ModeCase> {};

TEST_P(EventDataTest, GoAlongToTheCopy) {
  builder.Tree("A");
  const auto source = builder.Event("A");
  const auto mechanism = std::make_shared<InputDeviationProxy>("late-A.in", &model);
  source->description = "stuck";
  source->unavailability = 0.25;
  source->frequency = 0.5;
  source->failureModel = FailureModel::FIXED;
  source->parameters = {{"Unavailability", 0.25}};
  source->coverage = {{"H", mechanism}};
  source->safetyRequirement = 3;
  const auto copy = CloneOf(source, &otherModel, GetParam().mode);
  EXPECT_EQ(copy->name, "A");
  EXPECT_EQ(copy->type, NodeType::FailureMode);
  EXPECT_EQ(copy->description, "stuck");
  EXPECT_EQ(copy->unavailability, 0.25);
  EXPECT_EQ(copy->frequency, 0.5);
  EXPECT_EQ(copy->failureModel, FailureModel::FIXED);
  EXPECT_EQ(copy->parameters, source->parameters);
  EXPECT_EQ(copy->coverage.at("H").lock(), mechanism);
  EXPECT_EQ(copy->safetyRequirement, 3);
}

INSTANTIATE_TEST_SUITE_P(Modes, EventDataTest,
                         ::testing::Values(ModeCase{"KeepIdentity", CloneMode::KeepIdentity},
                                           ModeCase{"NewIdentity", CloneMode::NewIdentity},
                                           ModeCase{"NewNodes", CloneMode::NewNodes}),
                         CaseName);

TEST_F(CloningTest, OwnerIsTheContextOrStays) {
  builder.Tree("A");
  const auto source = builder.Event("A");
  const auto owner = parts.AddComponent("A");
  const auto replica = parts.AddComponent("B");
  source->owner = owner;
  EXPECT_EQ(CloneOf(source, &model, CloneMode::NewIdentity)->owner.lock(), owner);
  EXPECT_EQ(CloneOf(source, &model, CloneMode::NewIdentity, replica)->owner.lock(), replica);
}

TEST_F(CloningTest, EventWithoutOwnerGetsNone) {
  builder.Tree("A");
  const auto replica = parts.AddComponent("B");
  const auto copy = CloneOf(builder.Event("A"), &model, CloneMode::NewIdentity, replica);
  EXPECT_TRUE(copy->owner.expired());
}

TEST_F(CloningTest, NormalEventStaysNormal) {
  const auto source = std::make_shared<NormalEvent>("N", &model, true);
  const auto copy = CloneOf(source, &otherModel, CloneMode::NewNodes);
  EXPECT_EQ(copy->GetTypeName(), "NormalEvent");
  EXPECT_EQ(copy->type, NodeType::Normal);
  EXPECT_EQ(copy->prime, source->prime);
}

TEST_F(CloningTest, ComplementOfTheModelStaysItself) {
  const auto source = builder.Tree("OR(~A)");
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(copy->GetChild(0), source->GetChild(0));
}

TEST_F(CloningTest, ComplementIsThatOfTheCloneOfItsEvent) {
  const auto source = builder.Tree("OR(~A, A)");
  const auto copy = CloneOf(source, &otherModel, CloneMode::NewNodes);
  EXPECT_EQ(ShapeOf(copy), "OR(~A, A)");
  const auto& event = static_cast<BasicEvent&>(*copy->GetChild(1));
  const auto& complement = static_cast<ComplementEvent&>(*copy->GetChild(0));
  EXPECT_EQ(event.complement.get(), &complement);
  EXPECT_EQ(complement.source, &event);
  EXPECT_EQ(complement.GetId(), -event.GetId());
  EXPECT_EQ(complement.prime, builder.Event("A")->complement->prime);
}

TEST_F(CloningTest, ClearingReachesTheEventOfAComplement) {
  const auto source = builder.Tree("OR(~A)");
  {
    // The clone of the event owns that of the complement, and only the memo holds it.
    const auto copy = source->Clone(&otherModel, CloneMode::NewNodes, true, nullptr);
    ASSERT_NE(builder.Node("A")->clone, nullptr);
    ClearClones(*source);
  }
  EXPECT_EQ(builder.Node("A")->clone, nullptr);
  EXPECT_EQ(builder.Event("A")->complement->clone, nullptr);
}

TEST_F(CloningTest, UnconnectedInputStaysOfItsClass) {
  const auto source = std::make_shared<InputDeviationNode>("in (UNCONNECTED)", &model, nullptr);
  const auto copy = CloneOf(source, &otherModel, CloneMode::NewNodes);
  EXPECT_EQ(copy->GetTypeName(), "InputDeviationNode");
  EXPECT_EQ(copy->type, NodeType::InputDeviation);
}

// Common causes.

class CommonCauseCloningTest : public CloningTest {
 protected:
  CommonCauseCloningTest()
      : cause(std::make_shared<CCF>("fire", &model, nullptr, true)),
        proxy(std::make_shared<PCCFProxy>("fire here", &model)) {
    proxy->Activate(cause);
  }

  std::shared_ptr<CCF> cause;
  std::shared_ptr<PCCFProxy> proxy;
};

TEST_F(CommonCauseCloningTest, CauseStrikesEveryReplica) {
  const auto replica = parts.AddComponent("B");
  const auto copy = CloneOf(proxy, &model, CloneMode::NewIdentity, replica);
  EXPECT_EQ(copy->GetChild(0), cause);
  EXPECT_EQ(copy->actual, cause);
  EXPECT_EQ(copy->node->actual, cause);
  EXPECT_EQ(copy->owner.lock(), replica);
}

TEST_F(CommonCauseCloningTest, EachReplicaHasAnEventOfItsOwn) {
  const auto copy = CloneOf(proxy, &model, CloneMode::NewIdentity);
  EXPECT_NE(copy->node, proxy->node);
  EXPECT_EQ(copy->node->name, "fire here");
  EXPECT_NE(copy->node->prime, 0.0);
}

TEST_F(CommonCauseCloningTest, CopyInTheSameModelSharesItsEvent) {
  const auto copy = CloneOf(proxy, &model, CloneMode::NewNodes);
  EXPECT_EQ(copy->node, proxy->node);
  EXPECT_EQ(copy->GetChild(0), cause);
}

TEST_F(CommonCauseCloningTest, CopyForAnotherModelHasOneCauseOfItsOwn) {
  const auto copy = CloneOf(proxy, &otherModel, CloneMode::NewNodes);
  const auto child = std::static_pointer_cast<CCF>(copy->GetChild(0));
  EXPECT_NE(child, cause);
  EXPECT_EQ(child->prime, cause->prime);
  EXPECT_EQ(copy->actual, child);
  EXPECT_EQ(copy->node->actual, child);
  EXPECT_NE(copy->node, proxy->node);
}

TEST_F(CommonCauseCloningTest, ClearingReachesCauseAndEvent) {
  proxy->ClearChildren();
  proxy->Clone(&otherModel, CloneMode::NewNodes, true, nullptr);
  ASSERT_NE(cause->clone, nullptr);
  ASSERT_NE(proxy->node->clone, nullptr);
  ClearClones(*proxy);
  EXPECT_EQ(cause->clone, nullptr);
  EXPECT_EQ(proxy->node->clone, nullptr);
}

TEST_F(CommonCauseCloningTest, EventTakesItsCauseAlong) {
  const auto copy = CloneOf(proxy->node, &otherModel, CloneMode::NewNodes);
  EXPECT_NE(copy->actual, cause);
  EXPECT_EQ(copy->actual->name, "fire");
  EXPECT_EQ(cause->clone, nullptr);
}

// Proxies.

TEST_F(CloningTest, ProxyKeepsItsClass) {
  for (const char* text :
       {"NOT(A)", "PROXY(A)", "IN(A)", "OUT(A)", "EXPORTED(A)", "GOTO(A)", "PCCF(A)", "STATE(A)"}) {
    const auto source = builder.Tree(text);
    const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
    EXPECT_EQ(copy->GetTypeName(), source->GetTypeName());
    EXPECT_EQ(ShapeOf(copy), text);
  }
}

TEST_F(CloningTest, OutputDeviationTakesItsOwnFieldsAlong) {
  const auto source = std::make_shared<OutputDeviationProxy>("A.out", &model, 12);
  source->classless = true;
  source->reference = true;
  const auto copy = CloneOf(source, &model, CloneMode::NewNodes);
  EXPECT_EQ(copy->line, 12);
  EXPECT_TRUE(copy->classless);
  EXPECT_TRUE(copy->reference);
}

TEST_F(CloningTest, GotoAndExportedDeviationBelongToTheContextOrStay) {
  const auto owner = parts.AddComponent("A");
  const auto replica = parts.AddComponent("B");
  const auto jump = std::make_shared<GotoNode>("late-A.out", &model, owner, 12);
  const auto exported = std::make_shared<ExportedDeviationProxy>("late-x", &model, owner, 13);
  EXPECT_EQ(CloneOf(jump, &model, CloneMode::NewNodes)->owner.lock(), owner);
  EXPECT_EQ(CloneOf(jump, &model, CloneMode::NewNodes, replica)->owner.lock(), replica);
  EXPECT_EQ(CloneOf(jump, &model, CloneMode::NewNodes)->line, 12);
  EXPECT_EQ(CloneOf(exported, &model, CloneMode::NewNodes)->owner.lock(), owner);
  EXPECT_EQ(CloneOf(exported, &model, CloneMode::NewNodes, replica)->owner.lock(), replica);
  EXPECT_EQ(CloneOf(exported, &model, CloneMode::NewNodes)->line, 13);
}

TEST_F(CloningTest, EventNodeGoesAlong) {
  const auto jump = std::make_shared<GotoNode>("late-A.out", &model, nullptr);
  const auto output = std::make_shared<OutputDeviationProxy>("late-A.out", &model);
  const auto exported = std::make_shared<ExportedDeviationProxy>("late-x", &model, nullptr);
  for (ProxyNode* source :
       {static_cast<ProxyNode*>(jump.get()), static_cast<ProxyNode*>(output.get()),
        static_cast<ProxyNode*>(exported.get())}) {
    const auto event = source->GetEventNode();
    const auto copy = CloneTemplate(*source, &model, CloneMode::NewNodes);
    EXPECT_EQ(static_cast<ProxyNode&>(*copy).GetEventNode(), event);
    const auto foreign = CloneTemplate(*source, &otherModel, CloneMode::NewNodes);
    const auto foreignEvent = static_cast<ProxyNode&>(*foreign).GetEventNode();
    EXPECT_NE(foreignEvent, event);
    EXPECT_EQ(foreignEvent->GetTypeName(), event->GetTypeName());
    EXPECT_EQ(event->clone, nullptr);
  }
}

TEST_F(CloningTest, StateProxyKeepsItsState) {
  const auto machine = std::make_shared<StateMachine>(&model);
  const auto state = std::make_shared<State>("failed", machine);
  const auto source = std::make_shared<StateProxy>("S", &model, state);
  EXPECT_EQ(CloneOf(source, &model, CloneMode::NewNodes)->targetState, state);
}

// Input deviations.

class InputCloningTest : public CloningTest {
 protected:
  InputCloningTest() : component(parts.AddComponent("A")), replica(parts.AddComponent("B")) {
    parts.AddPort(component, "in");
    parts.AddPort(replica, "in");
    source = parts.Input(component, "late", "in");
    source->line = 12;
    source->SetCoverage("H", 90.0);
  }

  std::shared_ptr<Component> component;
  std::shared_ptr<Component> replica;
  std::shared_ptr<InputDeviationProxy> source;
};

TEST_F(InputCloningTest, RecordIsSharedWithinTheComponent) {
  for (const auto& context : {std::shared_ptr<Component>(), component}) {
    const auto copy = CloneOf(source, &model, CloneMode::NewNodes, context);
    EXPECT_EQ(copy->deviation, source->deviation);
    EXPECT_EQ(copy->name, "late-Main::A.in");
    EXPECT_EQ(copy->line, 12);
    EXPECT_EQ(copy->GetCoverage("H"), 90.0);
  }
}

TEST_F(InputCloningTest, RecordOfAnotherComponentIsTakenFromThere) {
  const auto record = parts.Input(replica, "late", "in")->deviation;
  const auto copy = CloneOf(source, &model, CloneMode::NewIdentity, replica);
  EXPECT_EQ(copy->deviation, record);
  EXPECT_EQ(copy->name, "late-Main::B.in");
}

TEST_F(InputCloningTest, RecordOfTheImplementationAddedLastComesFirst) {
  parts.Input(replica, "late", "in");
  parts.AddImplementation(replica, "second");
  const auto record = parts.Input(replica, "late", "in")->deviation;
  EXPECT_EQ(CloneOf(source, &model, CloneMode::NewIdentity, replica)->deviation, record);
}

TEST_F(InputCloningTest, MissingRecordIsMadeOnce) {
  const auto first = CloneOf(source, &model, CloneMode::NewIdentity, replica);
  const auto second = CloneOf(source, &model, CloneMode::NewIdentity, replica);
  EXPECT_NE(first->deviation, source->deviation);
  EXPECT_EQ(first->deviation, second->deviation);
  EXPECT_EQ(first->deviation->GetOwner(), replica);
  EXPECT_EQ(first->GetCoverage("H"), 90.0);
  EXPECT_EQ(first->GetEventNode(), second->GetEventNode());
}

// Properties of any graph.

using Pairs = std::map<const FaultTreeNode*, const FaultTreeNode*>;

/// Follows both graphs from a pair of nodes and tells what does not match.
void ExpectAlike(const FaultTreeNode& source, const FaultTreeNode& copy, Pairs& pairs,
                 Pairs& reverse) {
  const auto [pair, isNew] = pairs.emplace(&source, &copy);
  const auto [back, isNewBack] = reverse.emplace(&copy, &source);
  ASSERT_EQ(pair->second, &copy) << "One node has two clones.";
  ASSERT_EQ(back->second, &source) << "Two nodes have one clone.";
  if (!isNew) return;
  ASSERT_EQ(source.type, copy.type);
  EXPECT_EQ(source.name, copy.name);
  EXPECT_EQ(source.state, copy.state);
  EXPECT_EQ(source.IsEvent(), &source == &copy);
  EXPECT_EQ(source.clone, nullptr);
  ASSERT_EQ(source.GetChildCount(), copy.GetChildCount());
  for (int i = 0; i < source.GetChildCount(); ++i) {
    ExpectAlike(*source.GetChild(i), *copy.GetChild(i), pairs, reverse);
  }
}

void ExpectAlike(const FaultTreeNode& source, const FaultTreeNode& copy) {
  Pairs pairs;
  Pairs reverse;
  ExpectAlike(source, copy, pairs, reverse);
}

TEST_F(CloningTest, CloneOfAnyGraphIsIsomorphicInEveryState) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomNodes random(seed, &model);
    const ScopedGraph source(random.MakeCyclic());
    SCOPED_TRACE(ShapeOf(*source));
    source->CopyChildrenToState("contracted");
    source->GetChild(0)->ClearChildren();
    const ScopedGraph copy(CloneOf(source.Get(), &model, CloneMode::NewNodes));
    ExpectAlike(*source, *copy);
    source->SetCurrentState("default");
    copy->SetCurrentState("default");
    ExpectAlike(*source, *copy);
    if (HasFailure()) return;
  }
}

TEST_F(CloningTest, LadderOfSharedGatesIsClonedAsALadder) {
  Pointer rung = builder.Tree("OR(A, B)");
  for (int i = 0; i < 64; ++i) {  // 2^64 paths.
    const auto next = Tree("OR(AND(), AND())");
    next->GetChild(0)->AddChild(rung);
    next->GetChild(1)->AddChild(rung);
    rung = next;
  }
  const int made = NodeCounters::Instance().gatesMade;
  const auto copy = CloneOf(rung, &model, CloneMode::NewNodes);
  EXPECT_EQ(NodeCounters::Instance().gatesMade - made, 3 * 64 + 1);
}

TEST_F(CloningTest, ChainAsDeepAsALargeModelIsCloned) {
  RunOnBigStack([this] {
    Pointer top = builder.Tree("A");
    for (int depth = 0; depth < 100000; ++depth) {
      const auto above = MakeGate(depth % 2 == 0 ? NodeType::Or : NodeType::And, "", &model);
      above->AddChild(top);
      top = above;
    }
    const auto copy = CloneOf(top, &model, CloneMode::NewNodes);
    EXPECT_EQ(NodeCounters::Instance().gatesMade, 200000);
    EXPECT_EQ(top->clone, nullptr);
    std::map<int, FaultTreeNode*> nodes;
    copy->CollectNodes(nodes);
    EXPECT_EQ(nodes.size(), 100001U);
  });
}

}  // namespace
}  // namespace FTS
