// What an analysis can say about optimised safety allocations.
'use strict';

/// An analysis makes no search; its allocations, if any, have a view of their own.
VelTarn.asilOptimisationSummary = () => VelTarn.make('p', {class: 'empty'},
    'Optimised safety allocations are not part of this result. ',
    VelTarn.make('a', {href: VelTarn.address(['allocations'])}, 'Safety allocations of the model'));
