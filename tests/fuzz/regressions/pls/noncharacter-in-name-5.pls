[plylistD:\File1=#=ash.mp3
File2=file:///tmp/%19lead%0AD:\ÿÿÿÿÿÿÿÿÿÿbreak.m\3pM
File3= ï¿¿bom.mp3
Numb%0AD:\break.mperOfEntries=1
