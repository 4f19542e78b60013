[pla=yl—Њ‹»ЕЈ№’le1=#=ap3
File2=file://fiђe:///lead%0AD:\яяяяяяяb%0ADЭЭЭЭЭЭЭЭЭЭЭЭЭЭЭдfile:///ЭЭЭЭЭЭЭЭЭЭЭЭЭХЭЭЭЭЭЭЭЭЭ1\break.mperЭЭЭЭtries=1
