% Reads logic programs that the program has written, and checks that they say what a model says:
% nothing but the facts and rules that docs/formats/problog.md tells of, over events and ports that
% are there.
%   swipl -q -f none -s check.pl -g main -t 'halt(1)' -- FILE...

% As the engine reads these files: a conjunction binds more than a disjunction.
:- op(1150, xfx, ::).
:- op(1100, xfy, '|').
:- op(1000, xfy, &).
:- op(900, fy, !).

main :-
    current_prolog_flag(argv, Files),
    Files \== [],
    maplist(check_file, Files),
    length(Files, Count),
    format("~d programs are as they should be~n", [Count]),
    halt(0).

check_file(File) :-
    catch(read_program(File, Clauses), Error,
          ( print_message(error, Error), format("~w: cannot be read~n", [File]), fail )),
    Clauses = [model(_) | _],
    check_all(File, statement, Clauses),
    findall(Leaf, (member(Clause, Clauses), body_of(Clause, Body), leaf_of(Body, Leaf)), Leaves),
    check_all(File, known_in(Clauses), Leaves),
    !.
check_file(File) :-
    format("~w: is refused~n", [File]),
    fail.

read_program(File, Clauses) :-
    setup_call_cleanup(open(File, read, Stream, [encoding(iso_latin_1)]),
                       read_clauses(Stream, Clauses), close(Stream)).

read_clauses(Stream, Clauses) :-
    read_term(Stream, Term, []),
    (   Term == end_of_file
    ->  Clauses = []
    ;   Clauses = [Term | Rest],
        read_clauses(Stream, Rest)
    ).

check_all(File, Goal, Terms) :-
    forall(( member(Term, Terms), \+ call(Goal, Term) ),
           format("~w: wrong: ~q~n", [File, Term])),
    forall(member(Term, Terms), call(Goal, Term)).

% What a clause may be. Everything is ground: a name that reads as a variable would match all.

statement(Clause) :- ground(Clause), clause_shape(Clause).

clause_shape(Probability :: Head :- Body) :- number(Probability), head(Head), body(Body).
clause_shape(deviation(Class, Port) :- Body) :- head(deviation(Class, Port)), body(Body).
clause_shape(Probability :: Event) :- number(Probability), event(Event).
clause_shape(Fact) :- fact(Fact).

fact(model(Name)) :- atom(Name).
fact(perspective(Name)) :- atom(Name).
fact(component(Name)) :- atom(Name).
fact(port(Name)) :- atom(Name).
fact(line(Name)) :- atom(Name).
fact(partOf(Part, Whole)) :- atom(Part), atom(Whole).
fact(allocatedTo(Part, Host)) :- atom(Part), atom(Host).
fact(desc(Name, Text)) :- atom(Name), string(Text).
fact(riskTime(Name, Time)) :- atom(Name), number(Time).
fact(severity(Hazard, Value)) :- atom(Hazard), number(Value).
fact(severity(Class, Port, Value)) :- atom(Class), atom(Port), number(Value).
fact(Formula) :-
    Formula =.. [unavailabilityFormula, Owner, Name, Word | Parameters],
    atom(Owner), atom(Name), atom(Word),
    maplist(number, Parameters).

head(hazard(Name)) :- atom(Name).
head(deviation(Class, Port)) :- atom(Class), atom(Port).
head(exportedPropagation(Class, Place)) :- atom(Class), atom(Place).

event(basicEvent(Owner, Name)) :- atom(Owner), atom(Name).
event(normalEvent(Owner, Name)) :- atom(Owner), atom(Name).
event(ccf(Owner, Name)) :- atom(Owner), atom(Name).

body(null) :- !.
body(A & B) :- !, body(A), body(B).
body('|'(A, B)) :- !, body(A), body(B).
body(!(A)) :- !, body(A).
body(Leaf) :- ( event(Leaf) ; Leaf = deviation(_, _) ; Leaf = exportedPropagation(_, _) ), !.

body_of((_ :- Body), Body).

leaf_of(A & B, Leaf) :- !, ( leaf_of(A, Leaf) ; leaf_of(B, Leaf) ).
leaf_of('|'(A, B), Leaf) :- !, ( leaf_of(A, Leaf) ; leaf_of(B, Leaf) ).
leaf_of(!(A), Leaf) :- !, leaf_of(A, Leaf).
leaf_of(null, _) :- !, fail.
leaf_of(Leaf, Leaf).

% What rules are about has to be there.

known_in(Clauses, deviation(_, Port)) :- !, memberchk(port(Port), Clauses).
known_in(Clauses, exportedPropagation(Class, Place)) :- !,
    memberchk((_ :: exportedPropagation(Class, Place) :- _), Clauses).
known_in(Clauses, Event) :- memberchk(_ :: Event, Clauses).
