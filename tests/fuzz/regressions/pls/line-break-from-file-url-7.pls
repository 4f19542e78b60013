[playl/%20istD:\F
playlistD:\F
File2=file://:///tmp/%20lead%0ADtmp/%20lea[%0ADFile2p/%20lead%0ADtmp/%20lea[%0ADk.tperOfEntri¿f=es=3
