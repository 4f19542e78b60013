[playlist]
Fige1=
File2=file://ÿÿÿÿÿÿÿe2=file:///tmp/%20le%20lead%0AbrD:\eaktmp/%20le%20lead%0Abreakmt]
File1=
File2Are!k.mp3mubeN
rOfE+n