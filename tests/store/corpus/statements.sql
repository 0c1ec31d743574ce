# Statements that the rules run, one per line, under the database they run on, with values in place
# of the program's '?'. A line that begins with '!' and an error number must be refused with that
# number: it names tables or columns that do not exist.

[clientes]
select * from mlrazas order by nom
select * from mlespecies order by nom
select * from CLlocalidad order by nom
select * from CLDepartamento order by nom
select * from Clientes order by idc
select * from Mascotas order by idm
select * from artplan
select top 1 * from clmarketing where id = 3
select top 1 * from mlpelajes where id = 3
select top 1 * from consumo where idm = 12
select top 1 * from mlrazas where nom like 'Caniche'
select * from mascotas inner join clientes on mascotas.idc = clientes.idc where mascotas.nom like 'lu*' order by clientes.ayn
select * from clmarketing order by nom
insert into Clientes (idc, ayn, dir, loc, dep, codp2, codt2, tel2, telc2, email, mark, obs, feci, fecu, deuda) values (57, 'Ruiz Ana', 'Mitre 100', 4, 2, '2000', '0341', '4251111', '155-2222', 'ana@correo.com', 1, 'Paga siempre', #03/05/24#, #03/05/24#, 0)
insert into Mascotas (idm, idc, nom, esp, raz, pel, car, Chip, fecn, pes, sex, ped, rep, dec, ser, obs, feci, fot) values (120, 57, 'Luna', 1, 14, 3, 'Mancha en el lomo', '985000000000001', #05/10/19#, 3.2, 1, 0, -1, 0, 0, '', #03/05/24#, 0)
delete * from mascotas where idc = 57
delete * from clientes where idc = 57
delete * from mascotas where idm = 120
delete * from ArtPlan where idm = 120
delete * from Mauri where idm = 120
delete * from Mahemograma where idm = 120
delete * from Mabio where idm = 120
delete * from Macultivo where idm = 120
delete * from Macopro where idm = 120
delete * from Minter where idm = 120
delete * from mhospedaje where idm = 120
delete * from Meco where idm = 120
delete * from Mclinica where idm = 120
delete * from Mrayos where idm = 120
select * from mclinica where idm = 120 order by fec desc
insert into email (nom) values ('correo.com')
update clientes set FaltaMail = 0 where idc = 57
update cllocalidad set ran = ran + 1 where ran < 32000 and id = 4
update cldepartamento set ran = ran + 1 where ran < 32000 and id = 2
update mlrazas set ran = ran + 1 where ran < 32000 and id = 14
select * from cllocalidad where nom like 'cen*' order by ran desc
select * from cldepartamento where nom like 'ros*' order by ran desc
select * from mlrazas where nom like 'can*' order by ran desc
update mlrazas set esp = 2 where id = 14
insert into cldepartamento (id, nom, ctel) values (2, 'Rosario', '0341')
insert into cllocalidad (id, nom, cp, dep) values (4, 'Centro', '2000', 2)
update cldepartamento set Ctel = '0341' where id = 2
update cllocalidad set Cp = '2000' where id = 4
insert into mlrazas (id, nom, esp) values (14, 'Caniche toy', 1)
select id,nom,esp from mlrazas order by nom
select id,nom from mlespecies order by nom
select id,nom from mlpelajes order by nom
SELECT * FROM CLDepartamento WHERE Nom LIKE 'Rosario'
SELECT * FROM MLEspecies WHERE Nom LIKE 'Canino'
update cllocalidad set nom = 'Centro', cp = '2000', dep = 2 where id = 4
update cldepartamento set nom = 'Rosario', ctel = 0341 where id = 2
!3078 SELECT * FROM Clientes LEFT JOIN CLLocalidades ON Clientes.Loc = CLLocalidades.ID WHERE CLLocalidades.ID = 4
SELECT * FROM MLRazas LEFT JOIN MLEspecies ON MLRazas.Esp = MLEspecies.ID WHERE MLEspecies.Nom LIKE 'Canino'
SELECT * FROM Mascotas LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.Id WHERE MLPelajes.Nom LIKE 'Negro'
SELECT * FROM Mascotas LEFT JOIN MLRazas ON Mascotas.raz = MLRazas.Id WHERE MLRazas.Nom LIKE 'Caniche'
delete * from cllocalidad where id = 4
delete * from mlespecies where id = 9
delete * from mlpelajes where id = 3
delete * from mlrazas where id = 14
delete * from clmarketing where id = 3
update clientes set perfil1 = -1 where idc = 57
update clientes set perfil1 = 0 where idc = 57
update clientes set perfil2 = -1 where idc = 57
update clientes set perfil2 = 0 where idc = 57
SELECT Idc, Perfil3 FROM Clientes
update clientes set perfil3 = -1 where idc = 57
update clientes set perfil3 = 0 where idc = 57
update clientes set perfil4 = -1 where idc = 57
update clientes set perfil4 = 0 where idc = 57
update clientes set perfil5 = 0
update clientes set perfil5 = -1 where idc = 57
SELECT MClinica.fec FROM ((Clientes LEFT JOIN Mascotas ON Clientes.Idc = Mascotas.Idc) LEFT JOIN MClinica ON Mascotas.Idm = MClinica.Idm) WHERE Clientes.Idc = 57 AND MClinica.Fec BETWEEN #02/04/24# AND #03/05/24#
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Nom LIKE '*luna*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  MLRazas.Nom LIKE '*caniche*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  MLEspecies.Nom LIKE '*canino*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  MLPelajes.Nom LIKE '*negro*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Car LIKE '*mancha*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Chip LIKE '*9850*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Clientes.ayn LIKE '*ruiz*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Clientes.Dir LIKE '*mitre*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  CLLocalidad.Nom LIKE '*centro*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Clientes.Tel2 LIKE '*425*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Clientes.TelC2 LIKE '*155*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Obs LIKE '*alergia*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Ped = -1  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Ped = 0  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Rep = -1  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Rep = 0  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Dec = -1  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Dec = 0  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Mascotas.*, Clientes.*, MLRazas.Nom, MLEspecies.Nom, MLPelajes.Nom, CLLocalidad.Nom, Mascotas.Car FROM (((((Mascotas LEFT JOIN Clientes ON Mascotas.IDC = Clientes.IDC) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) LEFT JOIN MLEspecies ON Mascotas.Esp = MLEspecies.ID) LEFT JOIN MLPelajes ON Mascotas.Pel = MLPelajes.ID) LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) WHERE  Mascotas.Nom LIKE '*luna*'  AND  Clientes.ayn LIKE '*ruiz*'  ORDER BY Mascotas.Nom, Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Ayn LIKE '*ruiz*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Dir LIKE '*mitre*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  CLLocalidad.Nom LIKE '*centro*'  ORDER BY Clientes.Ayn
!3061 SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  CLDepartamento.Nombre LIKE '*ros*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.codp2 LIKE '*20*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Codt2 LIKE '*0341*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Tel2 LIKE '*425*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Telc2 LIKE '*155*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Email LIKE '*correo*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  CLMarketing.Nom LIKE '*radio*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Obs LIKE '*paga*'  ORDER BY Clientes.Ayn
SELECT Clientes.*, CLLocalidad.Nom, CLDepartamento.Nom, CLMarketing.Nom FROM (((Clientes LEFT JOIN CLLocalidad ON Clientes.Loc = CLLocalidad.ID) LEFT JOIN CLDepartamento ON Clientes.Dep = CLDepartamento.ID) LEFT JOIN CLMarketing ON Clientes.Mark = CLMarketing.ID) WHERE  Clientes.Ayn LIKE '*ruiz*'  AND  Clientes.Dir LIKE '*mitre*'  ORDER BY Clientes.Ayn
select top 1 ida from ArtPlan where idm = 120 and idcat = 3 and ida = 4 and (si = 2 or si = 3)
select top 1 ida from artPlan where idm = 120 and idcat = 3
select IdPlan from PlanMascota where idm = 120 and idcat = 3
insert into ArtPlan (idm, ida, rep, dos, si, IdCat) values (120, 4, #03/26/24#, 1, 2, 3)
select * from PlanMascota where idm = 120 and idcat = 3
insert into PlanMascota (idm, idplan, idcat) values (120, 16, 3)
select * from ArtPlan where idm = 120 and idcat = 3 order by rep
select * from ArtPlan where idm = 120 and ida = 4 and idcat = 3 order by dos
select * from ArtPlan where idm = 120 and idcat = 3 and si = 2 order by rep
select * from ArtPlan where idm = 120 and idcat = 3 order by rep,ida,dos
select * from ArtPlan where idm = 120 and idcat = 3 order by ida,dos
select * from ArtPlan where idm = 120 and idcat = 3 order by col asc, rep asc
delete * from ArtPlan where idm = 120 and ida = 4 and dos = 2 and idcat = 3
update mascotas set fult = #03/05/24# where idm = 120
delete * from FichasVisitadas where fec < date() - 30
select * from mclinica where idm = 120 and fec = #03/05/24#
insert into FichasVisitadas (idm, fec, hor, tip, idu) values (120,Date(),Time(),'f', 2)
insert into Mclinica (idm,idclinica,fec,cli,tmp,pes,idu, cantfotos) values (120,3001,#03/05/24#,'Age 4 years. Control',38.5,3.2,2, 0)
update mascotas set pes = 3.2 where idm = 120
UPDATE Mclinica SET Cli = 'Control. Reposo', Fec = #03/05/24#, Tmp = 38.5, Pes = 3.2 WHERE idclinica = 3001
delete * from mclinica where idclinica = 3001
select * from FichasVisitadas where fec = #03/05/24# order by hor
select * from mahemograma where idm = 120 order by fec desc
select * from mabio where idm = 120 order by fec desc
select * from MAuri where idm = 120 order by fecha
select * from MAcultivo where idm = 120 order by fecha
select * from MAcopro where idm = 120 order by fecha
select * from Meco where idm = 120 order by fec desc
select * from Mrayos where idm = 120 order by fec desc
select * from ArtPlan where idm = 120 and (si = 2 or si = 3) order by rep
select * from ArtPlan where idm = 120 and col < date() and (si=2 or si=3) order by rep
select * from ArtPlan where idm = 120 and (si = 1 or si = 3 or si = 4) and IdCat = 3 order by col
select * from ArtPlan where idm = 120 and (si = 1 or si = 3 or si = 4) order by col
select * from ArtPlan where idm = 120 and (si = 1 or si = 3 or si = 4) and IdCat = 4 order by col
SELECT * FROM Mascotas WHERE IDM = 120
SELECT * FROM MClinica WHERE Idm = 120 ORDER BY Fec
update mlespecies set ali = 500 where id = 2
select * from consumo where idcat = 1 and idm = 120
select * from consumo where idm = 120 and idcat = 1
update mascotas set tarea = -1 where idm = 120
CREATE TABLE AvisosPlanificadas (ID Text, Texto LongText)
update consumo set FaltaHoy = 0
select * from consumo inner join mascotas on consumo.idm = mascotas.idm where can > 0
SELECT * FROM ArtPlan INNER JOIN Mascotas ON ArtPlan.Idm = Mascotas.Idm WHERE (ArtPlan.Si = 0 or ArtPlan.Si = 2) and ArtPlan.Rep BETWEEN #02/24/24# AND #03/04/24# ORDER BY ArtPlan.Idm
select * from ArtPlan where idm = 120 and idcat = 3 and rep < Date() order by rep
select * from ArtPlan inner join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = #03/05/24# and (ArtPlan.si = 0 or ArtPlan.si = 2)
select * from ArtPlan inner join mascotas on mascotas.idm = ArtPlan.idm where ArtPlan.rep = #03/12/24# and (ArtPlan.si = 0 or ArtPlan.si = 2) and (mascotas.ser = 0) and Ana = 0
select * from mascotas where fecn is not null
select * from mascotas where int = -1
select * from mhospedaje where fent < #03/05/24# and tip = 'r'
update Mascotas set hos = 0 where idm = 120
select * from mhospedaje where tip = 'h'
select idm,tarea from mascotas where tarea = -1
SELECT * FROM Clientes WHERE email IS NOT NULL AND email <> '' AND feci BETWEEN (DATE()-2) AND DATE()
select * from ArtPlan inner join Mascotas on ArtPlan.idm = Mascotas.idm where (Mascotas.ser = 0) and ArtPlan.rep between #03/01/24# and #03/04/24# and (si = 0 or si = 2) and dec = 0 order by Mascotas.nom
select * from ArtPlan inner join Mascotas on ArtPlan.idm = Mascotas.idm where (Mascotas.ser > 0) and ArtPlan.rep between #03/02/24# and #03/05/24# and (si = 0 or si = 2) and dec = 0 order by Mascotas.nom
select * from AvisosPlanificadas where ID = '120-4-2'
insert into AvisosPlanificadas (ID, Texto) values ('120-4-2', 'Llamar por la tarde')
select top 1 dir,loc,dep,codp2 from clientes where idc = 57
update clientes set FaltaMail = -1 where idc = 57
update ArtPlan set Ana = -1 where Idm = 120 and Ida = 4 and Dos = 2
SELECT Idc, Obra FROM Clientes WHERE Obra <> 0 AND Obra <> 4 AND Obra <> 3
select * from clientes where obra = 5
SELECT * FROM Clientes WHERE Idc = 57
update clientes set deuda = -1 where idc = 57
update clientes set obra = 1 where idc = 57
update clientes set deuda = 0 where idc = 57
SELECT * FROM Clientes WHERE Clientes.IDC = 57
insert into FichasVisitadas (idm, fec, hor, tip, idu) values (120,Date(),Time(),'v',2)
select nom from mascotas where idc = 57 order by nom
select * from clientes where obra > 0  order by ayn
select * from clientes where obra = 1 order by ayn
select * from clientes where obra = 5 order by ayn
select * from clientes where obra = 2 order by ayn
select idm from mascotas where idc = 57 and nom like 'Luna'
select obra from clientes where idc = 57
update clientes set obra = 3 where idc = 57
UPDATE Clientes SET Obra = 0 WHERE IDC = 57
select * from clientes where idc = 57 and obra > 0
select * from clientes where obra  = 2
insert into mhospedaje (idm, idcanil, fent, fsal, tip) values (120, 4, #03/05/24#, #03/08/24#, 'h')
select * from mhospedaje where idm = 120
select * from mhospedaje where fent between #03/05/24# and #03/19/24# or fsal between #03/05/24# and #03/19/24#
select * from mhospedaje where fsal > #03/19/24# and fent < #03/05/24#
UPDATE MAscotas SET Hos = 1 WHERE IDM = 120
select * from mhospedaje where tip = 'h' and fsal >= #03/05/24#
select * from mhospedaje where tip = 'h' and fsal >= date()
delete * from mhospedaje where idm = 120 and tip = 'h'
update mhospedaje set tip = 'h' where idm = 120
select * from clientes order by ayn
select * from mascotas order by nom
select * from mascotas where idc = 57
SELECT * FROM ((Clientes LEFT JOIN Mascotas ON Clientes.Idc = Mascotas.Idc) LEFT JOIN MLRazas ON Mascotas.Raz = MLRazas.ID) ORDER BY Clientes.Ayn, Mascotas.Nom
select * from ArtPlan inner join Mascotas on ArtPlan.idm = Mascotas.idm where (Mascotas.ser > 0) and ArtPlan.rep between #03/05/24# and #03/05/24#
select * from ArtPlan inner join Mascotas on ArtPlan.idm = Mascotas.idm where (Mascotas.ser = 0) and ArtPlan.rep between #03/05/24# and #03/05/24#
select * from Mascotas inner join MHospedaje on MHospedaje.Idm = Mascotas.Idm
select * from mascotas where MONTH(fecn) = MONTH(DATE()) and DAY(fecn) = DAY(DATE()) and DEC = 0
select * from Mascotas inner join Consumo on Consumo.Idm = Mascotas.Idm where FaltaHoy = -1 and (Ser = 0) and dec = 0
select * from Mascotas inner join Consumo on Consumo.Idm = Mascotas.Idm where FaltaHoy = -1 and (Ser > 0) and dec = 0
select * from mascotas where MONTH(fecn) = MONTH(DATE()) and DEC = 0
SELECT * FROM Mascotas WHERE Rep = -1 ORDER BY Nom
SELECT * FROM Mascotas WHERE rep = -1 and dec = 0 ORDER BY Nom
SELECT * FROM Mascotas WHERE ped = -1 ORDER BY Nom
SELECT * FROM Clientes WHERE Perfil3 = -1 OR (Perfil1 = -1 AND Perfil2 = 0 AND Perfil3 = -1) ORDER BY Ayn
SELECT * FROM ArtPlan WHERE Idm = 120
SELECT Idc FROM Clientes WHERE Ayn LIKE 'ruiz*'
ALTER TABLE MAuri ADD COLUMN Metodo2 TEXT(100)
UPDATE MAuri SET Metodo2 = Metodo
ALTER TABLE MAcultivo ADD COLUMN TMuetra2 TEXT(200)
ALTER TABLE MAcopro ADD COLUMN Tecnica2 TEXT(200)
ALTER TABLE Mascotas ADD COLUMN Chip TEXT(70)
INSERT INTO Clientes (idc, ayn, dir, tel2, email, obs, loc, dep, feci, fecu) VALUES (58, 'Paz Juan', 'San Juan 26', '4252224', 'paz@correo.com', 'Médico', 0, 0, #03/05/24#, #03/05/24#)
ALTER TABLE Clientes ALTER COLUMN email TEXT(160)
ALTER TABLE Clientes ALTER COLUMN telC TEXT(50)
UPDATE Clientes SET Perfil3 = 0, Perfil4 = 0
CREATE TABLE EnciclopediaCategorias (ID COUNTER, Nombre TEXT (100))
CREATE TABLE EnciclopediaSubCategorias (ID COUNTER, IDCategoria INTEGER, Nombre TEXT (100))
CREATE TABLE Enciclopedia (ID COUNTER, IDCategoria INTEGER, IDSubCategoria INTEGER)
CREATE TABLE EnciclopediaRecursos (ID COUNTER, IDEnciclopedia INTEGER, RutaArchivo LONGTEXT, Descripcion LONGTEXT)
SELECT * FROM ((Enciclopedia LEFT JOIN EnciclopediaCategorias ON Enciclopedia.IDCategoria = EnciclopediaCategorias.ID) LEFT JOIN EnciclopediaSubCategorias ON EnciclopediaSubCategorias.ID = Enciclopedia.IDSubCategoria) ORDER BY EnciclopediaCategorias.Nombre, EnciclopediaSubCategorias.Nombre
SELECT * FROM EnciclopediaRecursos WHERE IDEnciclopedia = 7 ORDER BY Descripcion
SELECT * FROM EnciclopediaCategorias WHERE Nombre LIKE 'enf*'
SELECT * FROM EnciclopediaSubCategorias WHERE Nombre LIKE 'mo*'
SELECT EnciclopediaSubCategorias.ID FROM EnciclopediaSubCategorias LEFT JOIN EnciclopediaCategorias ON EnciclopediaCategorias.ID = EnciclopediaSubCategorias.IDCategoria WHERE EnciclopediaCategorias.ID = 1 AND EnciclopediaSubCategorias.Nombre LIKE 'mo*'
INSERT INTO EnciclopediaCategorias (Nombre) VALUES ('Enfermedades Infecciosas')
INSERT INTO EnciclopediaSubCategorias (Nombre, IDCategoria) VALUES ('Moquillo canino',1)
SELECT MAX (ID) AS maxID FROM EnciclopediaCategorias
SELECT MAX (ID) AS maxID FROM EnciclopediaSubCategorias
SELECT ID FROM Enciclopedia WHERE IDCategoria = 1 AND IDSubCategoria = 9
INSERT INTO Enciclopedia (IDCategoria, IDSubCategoria) VALUES (1, 9)
INSERT INTO EnciclopediaRecursos (IDEnciclopedia, RutaArchivo, Descripcion) VALUES (7,'\Enciclopedia\1-1\Discoespondilitis.jpg','Discoespondilitis')
DELETE FROM EnciclopediaRecursos WHERE ID = 31
DELETE FROM EnciclopediaRecursos WHERE IDEnciclopedia = 7
DELETE FROM Enciclopedia WHERE ID = 7
DELETE FROM EnciclopediaSubCategorias WHERE ID = 9
DELETE FROM EnciclopediaCategorias WHERE ID = 1
SELECT COUNT(ID) As Filas FROM Enciclopedia WHERE IDCategoria = 1

[finanzas]
select * from flcategorias order by nom
select * from proveedores
select * from ArtVenc
select top 1 * from articulos where ida = 35
select top 1 * from ctactec where idventa = 1207
select top 1 * from ventas where idventa = 1207
select top 1 * from compras where idcompra = 88
select top 1 * from flcategorias where nom like 'Vacunas'
select top 1 nom from articulos where nom like 'Antirrábica'
select top 1 nom from proveedores where nom like 'Laboratorio Sur'
select * from Servicios where ida = 41
select saldo,fecultpago,men from ctactec where idc = 57 and cancelado = 0
select * from CtaCteC where FecUltPago <= (DATE() - 60) and cancelado = 0
SELECT Ventas.fec FROM Ventas WHERE Idc = 57 AND Ventas.fec BETWEEN #02/04/24# AND #03/05/24#
select * from FLCategorias where suministro = 'p' order by nom
select * from articulos where idcat = 3 order by ida asc
select nom,ida from articulos where idcat = 3
select ida,nom from articulos where idcat = 3 order by nom
select idcat,nom from flcategorias where suministro = 'p' order by nom
select * from articulos where idcat = 2
SELECT Nom FROM Articulos WHERE Ida = 41
select * from ctactec where fecultpago <= #02/04/24# and cancelado = 0
SELECT * FROM Articulos WHERE Can < Min
SELECT Articulos.Nom, ArtVenc.Can, ArtVenc.Ven FROM Articulos LEFT JOIN ArtVenc ON Articulos.IDA = ArtVenc.IDA WHERE ArtVenc.Ven <= #04/04/24#
SELECT * FROM FLCategorias LEFT JOIN Articulos ON FLCategorias.IDCat = Articulos.IDCat WHERE FLCategorias.Suministro = 'p' AND Articulos.Ida = 4
SELECT * FROM FLCategorias LEFT JOIN Articulos ON FLCategorias.IDCat = Articulos.IDCat WHERE FLCategorias.Suministro = 'c' AND Articulos.Ida = 35
SELECT * FROM FLCategorias WHERE Nom LIKE 'Vacunas'
SELECT * FROM Articulos WHERE Nom LIKE 'Antirrábica'
select cb from articulos where cb like '7790001000012'
INSERT INTO Articulos (ida, idcat, nom, can, p1, p2, p3, p4, vto, pedAut, uni, canuni, cb, min, CostoNeto, CostoImp, VentaImp, P1Calcular, P2Calcular, P3Calcular, P4Calcular, P1Porcentaje, P2Porcentaje, P3Porcentaje, P4Porcentaje, CodigoProveedor) VALUES (35, 1, 'Alimento 15 kg', 60, 199.65, 0, 0, 0, 1, 0, 'u/kg', 15, '7790001000012', 2, 100, 21, 10, 4, 1, 1, 1, 50, 0, 0, 0, 'A-15')
INSERT INTO Articulos (ida, idcat, nom, can, p1, p2, p3, p4, vto, pedAut, uni, canuni, cb, min, CostoNeto, CostoImp, VentaImp, P1Calcular, P2Calcular, P3Calcular, P4Calcular, P1Porcentaje, P2Porcentaje, P3Porcentaje, P4Porcentaje, CodigoProveedor) VALUES (41, 2, 'Consulta', 0, 25, 0, 0, 0, 0, 0, 'u', 0, '41', 0, 0, 0, 0, 1, 1, 1, 1, 0, 0, 0, 0, '')
INSERT INTO Servicios (ida, tiempo, tipo) VALUES (41, 30, 1)
UPDATE Servicios SET tiempo = 45, tipo = 2 WHERE ida = 41
delete * from articulos where ida = 35
SELECT TOP 5 Proveedores.Nom, Articulos.Nom, ComprasDetalle.Cos FROM (((ComprasDetalle INNER JOIN Compras ON ComprasDetalle.IDCompra = Compras.IDCompra) INNER JOIN Articulos ON ComprasDetalle.IDA = Articulos.IDA) INNER JOIN Proveedores ON Compras.IDP = Proveedores.IDP) WHERE ComprasDetalle.IDA = 35 ORDER BY Compras.Fec, ComprasDetalle.Cos ASC
select ida,can,uni,nom from articulos where idcat <> 2 order by nom
select ida,canamb,uni,nom from articulos where canamb <> 0 order by nom
update articulos set can = can - 1, canamb = canamb + 1 where ida = 35
update articulos set can = can + 1, canamb = canamb - 1 where ida = 35
insert into ctaCteC (idc, fecUltPago, total, saldo, idVenta) values (57, #03/05/24#, 199.65, 149.65, 1207)
insert into CtaCtePagosC (idVenta, pago, fec, idu) values (1207, 50, #03/05/24#, 2)
insert into Ventas (tfac, idv, idvSerie, idc, idm, fec, hor ,tot, idu, tip, amb, recargo, idventa) values ('1', 7, 1, 57, 120, #03/05/24#, #09:30# ,199.65, 2, 1, 0, 0, 1207)
SELECT * FROM Articulos WHERE IDA = 35
INSERT INTO VentasDetalle (idventa, ida, can, uni, pu, sub, Impuesto) VALUES (1207, 35, 1, 'u', 199.65, 199.65, 10)
UPDATE Articulos SET P1 = 199.65 WHERE IDA = 35
update articulos set canamb = canamb - 15 where ida = 35
update articulos set can = can - 15 where ida = 35
select * from ArtVenc where ida = 35 order by ven
insert into gastos (hor, fac, con, tot, fec, idu, idgasto, tip) values (#09:30#, '0001-00000012', 'Luz', 45.5, #03/05/24#, 2, 301, 1)
insert into UsoInterno (ida, can, fec) values (35, 2, #03/05/24#)
select * from ctactec where idc = 57 and cancelado = 0
select * from ctactep where idp = 6 and cancelado = 0
select * from ctactePagosC where idventa = 1207
select * from ctactePagosP where idcompra = 88
select men from ctactec where idc = 57 and idventa = 1207
update CtaCteC set saldo = 0, men = 0, fecultpago = #03/05/24# where idventa = 1207
update CtaCteC set Cancelado = -1 where idventa = 1207
update ventas set tip = 4 where idventa = 1207
select idc from ctactec where idc = 57 and cancelado = 0
update CtaCteC set saldo = saldo - 25.5 , men = 0, fecultpago = #03/05/24# where idventa = 1207
select * from ctaCteC where idventa = 1207
update CtaCteP set Cancelado = -1 where idcompra = 88
update compras set tip = 4 where idcompra = 88
insert into CtaCtePagosP (idcompra, pago, fec, idu) values (88, 120, #03/05/24#, 2)
update CtaCteP set saldo = 0, fecultpago = #03/05/24# where idp = 6 and idcompra = 88
update CtaCteP set saldo = saldo - 60 , fecultpago = #03/05/24# where idp = 6 and idcompra = 88
select * from ctaCtep where idcompra = 88
select * from ctacteC where cancelado = 0
select * from ctactepagosC where idventa = 1207 order by fec
select * from ctacteP where cancelado = 0
select * from ctactepagosP where idcompra = 88 order by fec
UPDATE ctacteC SET Saldo = Saldo + 50 WHERE IDVenta = 1207
UPDATE ctactePagosC SET Pago = 0 WHERE ID = 415
UPDATE ctacteP SET Saldo = Saldo + 60 WHERE IDCompra = 88
UPDATE ctactePagosP SET Pago = 0 WHERE ID = 77
SELECT * FROM Ventas WHERE Fec = #03/05/24# AND Tip <> 5
select pago from CtaCtePagosC where IDVenta = 1207 and fec = #03/05/24#
select * from ventasdetalle where idventa = 1207
SELECT * FROM Ventas WHERE Fec = #03/05/24# and Tip = 5
select * from CtaCtePagosC where fec = #03/05/24# order by idventa
select * from gastos where fec = #03/05/24#
select * from compras where fec between #03/01/24# and #03/05/24# order by fec, hor
select pago from CtaCtePagosp where IDCompra = 88
select * from ComprasDetalle where idCompra = 88
select tot,idc,tip,amb,recargo from Ventas where IDVenta = 1207
delete * from ctacteC where idventa = 1207
delete * from ctactepagosC where idventa = 1207
select idc from ctactec where idc = 57
update Articulos set Can = Can + 15 where ida = 35
update Articulos set CanAmb = CanAmb + 15 where ida = 35
select tot,tip,recargo from Compras where IDcompra = 88
delete * from CtaCteP where idcompra = 88
delete * from ctactepagosP where idcompra = 88
select canuni, can, canamb, uni, nom from Articulos where ida = 35
select tip,tot from Gastos where IDGasto = 301
select idv, idvserie, tfac from ventas where idventa = 1207
SELECT * FROM ((Ventas LEFT JOIN VentasDetalle ON VentasDetalle.IDVenta = Ventas.IDVenta) LEFT JOIN Articulos ON VentasDetalle.IDA = Articulos.IDA) WHERE Ventas.IDVenta = 1207
SELECT * FROM Ventas WHERE TFac = '4' AND Facturado = 0 AND Tip <> 3 ORDER BY Fec
SELECT * FROM Ventas LEFT JOIN VentasDetalle ON Ventas.IDVenta = VentasDetalle.IDVenta WHERE Ventas.IDVenta = 1207
UPDATE Ventas SET Facturado = -1 WHERE IDVenta = 1207
select cos from comprasdetalle inner join compras on compras.idcompra = comprasdetalle.idcompra where compras.idp = 6 and comprasdetalle.ida = 35
select * from articulos where idcat <> 2 order by nom
SELECT * FROM Proveedores ORDER BY Nom
SELECT Proveedores.Iva, TiposFiscal.Nombre FROM Proveedores LEFT JOIN TiposFiscal ON Proveedores.Iva = TiposFiscal.ID WHERE Proveedores.IDP = 6
insert into ctaCteP (idcompra, fac, idp, fecUltPago, total, saldo) values (88, '0001-00004321', 6, #03/05/24#, 300, 180)
insert into Compras (tfac, idcompra, fac, remito, idp, tot, fec, hor, idu, tip, recargo) values ('1', 88, '0001-00004321', 'R-12', 6, 300, #03/05/24#, #09:30#, 2, 2, 0)
insert into ComprasDetalle (idCompra, ida, cos, can, sub, uni) values (88, 35, 100, 3, 300, 'u')
update articulos set can = can + 45 where ida = 35
insert into ArtVenc (ida, can, ven) values (35, 3, #06/30/25#)
UPDATE Articulos SET CostoNeto = 100 WHERE IDA = 35
SELECT * FROM TiposFiscal
insert into proveedores (idp, nom, dir, tel, mail, iva, cuit, ped) values (6, 'Laboratorio Sur', 'Ruta 9 km 12', '4307777', 'ventas@sur.com', 4, '30-12345678-9', 0)
update proveedores set nom = 'Laboratorio Sur', dir = 'Ruta 9 km 12', tel = '4307777', mail = 'ventas@sur.com', iva = 4, cuit = '30-12345678-9', ped = 0 where idp = 6
SELECT * FROM FLCategorias WHERE IDCat = 3
update articulos set CostoNeto = 110, CostoImp = 23.1, VentaImp = 10, CodigoProveedor = 'A-15' WHERE Nom LIKE 'Alimento 15 kg'
select * from flcategorias where idcat >= 0 order by nom
select * from articulos where idcat = 3 and canamb >= 0 order by nom
select * from articulos where idcat = 3 and (canamb <> 0 or idcat = 2) order by nom
select * from articulos where idcat = 8 order by nom
SELECT * FROM CtaCteC WHERE cancelado = 0 ORDER BY FecUltPago
SELECT * FROM CtaCteP LEFT JOIN Proveedores ON CtaCteP.Idp = Proveedores.Idp WHERE CtaCteP.Cancelado = 0 ORDER BY Proveedores.Nom, CtaCteP.FecUltPago
SELECT * FROM Articulos order by Nom
SELECT * FROM Articulos WHERE Can < Min ORDER BY Nom
SELECT TOP 100 IDC, SUM(Ventas.Tot) AS Total FROM Ventas WHERE IDC <> 0 AND Tip <> 3 GROUP BY IDC
SELECT Ventas.IDVenta, Ventas.Tot, (SELECT SUM(Pago) FROM CtaCtePagosC WHERE IDVenta = Ventas.IDVenta) AS Pagos, (Ventas.Tot - Pagos) AS Saldo FROM Ventas WHERE Ventas.Fec BETWEEN #03/01/24# AND #03/31/24#
SELECT Ventas.*, VentasDetalle.*, Articulos.Nom, FLCategorias.Nom, (SELECT SUM(Pago) FROM CtaCtePagosC WHERE IDVenta = Ventas.IDVenta) AS Pagos, (Ventas.Tot - Pagos) AS Saldo FROM (((Ventas LEFT JOIN VentasDetalle ON Ventas.IDVenta = VentasDetalle.IDVenta) LEFT JOIN Articulos ON VentasDetalle.IDA = Articulos.IDA) LEFT JOIN FLCategorias ON Articulos.IDCat = FLCategorias.IDCat) WHERE Ventas.Fec BETWEEN #03/01/24# AND #03/31/24# AND Ventas.Tip <> 3 ORDER BY Ventas.Fec
SELECT * FROM Gastos WHERE Fec BETWEEN #03/01/24# AND #03/31/24#
SELECT * FROM Articulos LEFT JOIN FLCategorias ON FLCategorias.IDCat = Articulos.IDCat WHERE Articulos.IDCat <> 2 ORDER BY FLCategorias.Nom, Articulos.Nom
ALTER TABLE Articulos ADD COLUMN CostoNeto CURRENCY
ALTER TABLE Articulos ADD COLUMN CostoImp CURRENCY
ALTER TABLE Articulos ADD COLUMN VentaImp CURRENCY
ALTER TABLE Articulos ADD COLUMN CodigoProveedor TEXT(100)
ALTER TABLE Articulos ADD COLUMN P1Calcular BYTE
ALTER TABLE Articulos ADD COLUMN P1Porcentaje CURRENCY
UPDATE Articulos SET CostoNeto = 0, CostoImp = 0, VentaImp = 0, CodigoProveedor = ''
UPDATE Articulos SET P1Calcular = 1, P2Calcular = 1, P3Calcular = 1, P4Calcular = 1, P1Porcentaje = 0, P2Porcentaje = 0, P3Porcentaje = 0, P4Porcentaje = 0
ALTER TABLE FLCategorias ADD COLUMN PorcentajeGanancia CURRENCY
ALTER TABLE Ventas ADD COLUMN Facturado YESNO
ALTER TABLE VentasDetalle ADD COLUMN Impuesto CURRENCY
ALTER TABLE ctactepagosC ADD COLUMN ID COUNTER
ALTER TABLE ctactepagosP ADD COLUMN ID COUNTER
CREATE TABLE TiposFiscal (ID COUNTER, Nombre TEXT(50))
INSERT INTO TiposFiscal (Nombre) VALUES ('Consumidor final')
INSERT INTO TiposFiscal (Nombre) VALUES ('Sin categorizar')
UPDATE Proveedores SET iva = iva + 1
UPDATE Ventas SET TFac='1' WHERE (TFac='A' OR TFac = 'a')
UPDATE Ventas SET TFac='2' WHERE (TFac='B' OR TFac = 'b')
UPDATE Ventas SET TFac='3' WHERE (TFac='C' OR TFac = 'c')
UPDATE Ventas SET TFac='4' WHERE (TFac='R' OR TFac = 'r')
UPDATE Ventas SET TFac='5' WHERE (TFac='T' OR TFac = 't')
UPDATE Compras SET TFac='1' WHERE (TFac='A' OR TFac = 'a')
ALTER TABLE Ventas ALTER COLUMN hora TEXT(25)

[morvane]
select * from configuracion
select top 1 nom from usuarios where idu = 2
select top 1 * from usuarios where nom like 'ana'
select top 1 nom from usuarios where nom like 'ana'
UPDATE Configuracion SET contadorarticulo = contadorarticulo + 1
delete * from TareasAgenda where fcreacion < date()
DELETE * FROM TareasAgenda WHERE Ida = -32000
INSERT INTO TareasAgenda (Ida, ID) VALUES (-32000, 4821)
SELECT * FROM TareasAgenda WHERE Ida = -32000
insert into errores (num, des, fec, fuente) values (3061, 'Pocos parametros', #03/05/24#, 'Tareas de Inicio. ')
select * from veterinaria
update configuracion set FechaUltimoInicio = #03/05/24#
select * from usuarios
select * from usuarios where nom like 'ana'
DELETE * FROM Veterinaria
INSERT INTO Veterinaria (nom, pro, dir, tel) values ('Clínica Norte', 'Ana Ruiz', 'Mitre 100', '4251111')
DELETE * FROM Usuarios
INSERT INTO Usuarios (idu, nom, up, ut) values (1, 'Ana', 'clave', 2)
delete * from pizarra
SELECT * FROM Pizarra WHERE Dibujo = 116
insert into pizarra (mensaje, dibujo, codigo1, codigo2) values ('Detected 3 clients', 107, 2, 8)
select * from pizarra
insert into perfiles (idc) values (57)
delete * from TareasAgenda where ida = 120 and (tip = 1 or tip = -42 or tip = -46)
select * from TareasAgenda where ida = 120 and est = 0 and tip > 0 and dia >= DATE()
select * from perfiles where buenascompras + malascompras >= 3
select * from perfiles where DeudasDemoradas + DeudasNoDemoradas >= 3
SELECT * FROM Perfiles WHERE TurnosCumplidos + TurnosNoCumplidos >= 3
update perfiles set buenascompras = buenascompras + 1 where idc = 57
update perfiles set malascompras = malascompras + 1 where idc = 57
select * from regimen
delete * from regimen
delete * from regimen where idr = 14
insert into regimen (Nom, Reg, Tip, Esp) values ('Vac. Can. < 3 meses', '1,21,1,0,4,365,1,0,4,365,1,0,4,365,1,0,4,9999,', 3, 1)
UPDATE Regimen SET Nom = 'Canine vaccines < 3 months' WHERE Idr = 16
select * from regimen where idr = 16 and tip = 3 and esp = 1
select * from regimen where idr = 16
select * from TareasAgenda where tip = 41 and ida = 120 and ArtAux = 4 and est = 0 and fcreacion <= date() order by fcreacion asc
SELECT * FROM TareasAgenda WHERE ida = 120 AND ArtAux = 4 AND est = 0 AND fcreacion <= date() ORDER BY fcreacion ASC
select idr,nom from regimen where tip = 3 and esp = 1
Select * from Usuarios order by nom
select dia,ala,tip,ida from TareasAgenda where dia = #03/05/24# and est = 0 and ala >= #09:30#
select * from TareasAgenda where dia = #03/05/24# and est = 0 and fmedio is null and ida = 120
insert into TareasAgenda (tip, ida, medio, fcreacion, artaux, des, id) values (-42, 120, 1, #03/05/24#, 4, '2', 4822)
insert into TareasAgenda (tip, ida, dia, hor, ala, medio, fcreacion, artaux, des, id) values (41, 120, #03/05/24#, #09:30#, #09:15#, 1, #03/05/24#, 0, 'Control', 4823)
insert into TareasAgenda (tip, ida, dia, hor, medio, fcreacion, artaux, des, id) values (41, 120, #03/05/24#, #09:30#, 4, #03/05/24#, 4, 'Vacunas - Antirrábica', 4824)
insert into TareasAgenda (tip, ida, dia, medio, fcreacion, artaux, des, id) values (-41, 120, #03/05/24#, 1, #03/05/24#, 35, '', 4825)
SELECT * FROM TareasAgenda WHERE dia = DATE()
SELECT * FROM TareasAgenda WHERE hor BETWEEN #08:25# AND #08:35#
select * from TareasAgenda where dia = #03/05/24# and (tip > 0) order by hor
select * from TareasAgenda where dia = #03/05/24# and ((tip > 0 OR tip = -100) OR (tip = -47)) order by hor
select * from TareasAgenda where fcreacion = #03/05/24# and (medio = 1 or medio = 2 or medio = 3) and (Tip < 0 and Tip <> -47)
UPDATE TareasAgenda SET Dia = #03/06/24# WHERE id = 4823
delete * from TareasAgenda where id = 4823
select * from TareasAgenda where tip = 41 and ida = 120 and est = 0 and fcreacion <= date() order by fcreacion asc
select * from TareasAgenda where dia = #03/05/24# and hor between #09:30# and #09:44#
select ida,hor,tip from TareasAgenda where dia = #03/05/24# and hor between #09:30# and #09:44#
delete * from TareasAgenda where ida = 120
delete * from TareasAgenda where tip = -47
delete * from TareasAgenda where fcreacion < (date() - 180) and (tip >= 41 and tip <= 60)
delete * from TareasAgenda where tip = 47
update configuracion set FechaInicioAnterior = FechaUltimoInicio
UPDATE Configuracion set FechaUltimoInicioMes = #03/05/24#
update perfiles set deudasdemoradas = deudasdemoradas + 1 where idc = 57
update Perfiles set TurnosNoCumplidos = TurnosNoCumplidos + 1 where idc = 57
select TOP 1 * from TareasAgenda where ida = 120 and est = 0 and (tip > 0)
select count ('dia') as [c] from TareasAgenda where dia = #03/05/24# and est = 0 and (Tip > 0 or Tip = -47)
select count ('fcreacion') as [b] from TareasAgenda where fcreacion = #03/05/24# and est = 0 and (Tip < 0 and Tip <> -47)
select * from TareasAgenda where (tip > 0)  and dia between #03/04/24# and #03/05/24#
update perfiles set TurnosCumplidos = TurnosCumplidos + 1 where idc = 57
SELECT COUNT ('dia') as [TareasAyer] FROM TareasAgenda where dia = #03/04/24# and est = 0 and (Tip > 0 or Tip = -47)
SELECT * FROM TareasAgenda WHERE Tip = -71 AND Ida = 57
select * from TareasAgenda where ( tip = 41 OR  tip = 44) and medio = 4 and fmedio is null and dia = #03/05/24# order by ida
select * from TareasAgenda where (medio = 1 or medio = 3) and est = 0 and fmedio is null and (fcreacion = #03/05/24# or dia = #03/05/24#)  order by tip, ida
update TareasAgenda set medio = 2 where (medio = 1 or medio = 3) and est = 0 and fmedio is null and (fcreacion = #03/05/24# or dia = #03/05/24#) and (tip=-46)
update TareasAgenda set medio = 2 where (medio = 1 or medio = 3) and est = 0 and fmedio is null and (fcreacion = #03/05/24# or dia = #03/05/24#) and (tip=-42)
update TareasAgenda set medio = 2 where (medio = 1 or medio = 3) and est = 0 and fmedio is null and (fcreacion = #03/05/24# or dia = #03/05/24#) and (tip=-43)
select * from TareasAgenda where medio = 2 and fmedio is null and fcreacion = #03/05/24# order by tip,ida
select * from TareasAgenda where (dia = date() and (tip = -49)) or (fcreacion = date() and (tip < 0 and tip <> -47))
update perfiles set deudasnodemoradas = deudasnodemoradas + 1 where idc = 57
select * from TareasAgenda where medio = 4 and dia = #03/05/24#
SELECT Idu FROM Usuarios WHERE Nom LIKE 'ana*'
UPDATE Veterinaria SET Nom = 'Clínica Norte'
UPDATE Veterinaria SET Pro = 'Ana Ruiz'
UPDATE Veterinaria SET Dir = 'Mitre 100'
UPDATE Veterinaria SET Tel = '4251111'
insert into usuarios (idu, nom, up, ut) values (3, 'Eva', '', 1)
delete * from usuarios where idu = 3
UPDATE Usuarios SET up = 'nueva' WHERE IDU = 3
ALTER TABLE Configuracion ADD COLUMN GuardarPrecioVentas YESNO
ALTER TABLE Configuracion ADD COLUMN ImprimirFactura YESNO
ALTER TABLE Configuracion ADD COLUMN GuardarCostoCompras YESNO
ALTER TABLE Configuracion ADD COLUMN RecibirNotificaciones YESNO
UPDATE Configuracion SET RecibirNotificaciones = -1
ALTER TABLE Configuracion ADD COLUMN ImpresionTicket YESNO
ALTER TABLE Configuracion ADD COLUMN TicketSup1 TEXT(40)
ALTER TABLE Configuracion ADD COLUMN TicketInf1 TEXT(40)
ALTER TABLE Configuracion ADD COLUMN MostrarNumeroComprobante YESNO
UPDATE Configuracion SET ImpresionTicket = 0, MostrarNumeroComprobante = -1
ALTER TABLE Configuracion ADD COLUMN NombreIdentificacionFiscal TEXT(30)
ALTER TABLE Configuracion ADD COLUMN NombreImpuestoCompraVenta TEXT(30)
UPDATE Configuracion SET NombreIdentificacionFiscal = 'CUIT', NombreImpuestoCompraVenta = 'IVA'
UPDATE Configuracion SET medidasalimento = 1
ALTER TABLE Configuracion ADD COLUMN Comprobante1 TEXT(15)
ALTER TABLE Configuracion ADD COLUMN SimboloComprobante1 TEXT(5)
UPDATE Configuracion SET Comprobante1 = 'Factura A', Comprobante2 = 'Factura B', Comprobante3 = 'Factura C', Comprobante4 = 'Remito', SimboloComprobante1 = 'A', SimboloComprobante2 = 'B', SimboloComprobante3 = 'C', SimboloComprobante4 = 'R'
UPDATE Configuracion SET AutVentaPlanificadas = 1, AutVentaConsumo = 1, AutVentaConsulta = 1, AutDosisPlanificada = 3
ALTER TABLE Configuracion ADD COLUMN MensajeriaMedicinaPrepaga LONGTEXT
ALTER TABLE Configuracion ADD COLUMN MensajeriaNuevoCliente LONGTEXT
ALTER TABLE Configuracion ADD COLUMN MensajeriaFrecuente LONGTEXT
UPDATE Configuracion SET AutMedicinaPrepaga = 1, AutNuevoCliente = 2, AutFrecuente = 2, PrincipalColor = 1
UPDATE Configuracion SET RegistrosFrecuente = 3, RegistrosBuenosCompradores = 3, RegistrosDemoraDeudas = 3, RegistrosDeudor = 1
UPDATE Configuracion SET AutRecordatorioCitasOlvida = 1, AutDeudaNoVenderComun = 1, AutDeudaNoVenderSupervisor = 1
ALTER TABLE Configuracion ADD COLUMN KgLbs SMALLINT
UPDATE Configuracion SET KgLbs = 1
ALTER TABLE Configuracion ADD COLUMN PruebaExclusivo TEXT(1)
ALTER TABLE Configuracion DROP COLUMN PruebaExclusivo

[os]
select top 1 * from planes where id = 1
select top 1 * from promotores where id = 1
select top 1 * from cobradores where id = 1
select * from planes where nom like 'Plan 1'
!3061 delete * from socios where id = 57
!3078 delete * from masasoc where idc = 57
select idc from socios where idc = 57 and fechavsol < DATE()
SELECT MAX(Fec) AS Fecha FROM Pagos WHERE IDC = 57
DELETE * FROM Socios WHERE Idc = 57
insert into pagos (idc, fec, pago, idu) values (57, #03/01/24#, 15.5, 2)
update socios set ultimopago = #03/01/24# where idc = 57
select * from pagos where fec = #03/05/24#
select idc,plan,ultimopago from socios where idc = 57
select * from planes where id = 1
insert into planes (nom, monto) values ('Plan 1', 15.5)
UPDATE Planes SET Nom = 'Plan 1', Monto = 17 WHERE ID = 1
insert into cobradores (nom, dir, tel, mail, obs) values ('Luis', 'San Juan 22', '4252222', 'luis@correo.com', '')
insert into promotores (nom, dir, tel, mail, obs) values ('Eva', 'San Juan 24', '4252223', 'eva@correo.com', '')
insert into medicos (nom, dir, tel, mail, obs) values ('Dr. Paz', 'San Juan 26', '4252224', 'paz@correo.com', '')
select id from cobradores where nom like 'Luis'
select id from promotores where nom like 'Eva'
select id from medicos where nom like 'Dr. Paz'
select * from planes
insert into MascotasAsociadas (idm, idc, nom) values (120, 57, 'Luna')
select * from mascotasAsociadas where idm = 120
update socios set ultimopago = #03/05/24# where idc = 57
update socios set fechabsol = #03/05/24# where idc = 57
DELETE FROM Socios WHERE IDC = 57
select * from Pagos where idc = 57
DELETE FROM Pagos WHERE ID = 415
select nom,idm from mascotasasociadas where idc = 57
select * from mascotasasociadas where idc = 57 and nom like 'Luna'
select * from socios where formapago = 'co' and cobrador = 1
select * from socios where zona = 2
ALTER TABLE Socios ADD COLUMN Calle2 TEXT(70)
UPDATE Socios SET Calle2 = Calle, Entre2=Entre, Y2 = Y, Barrio2 = Barrio, Departamento2 = Departamento, Localidad2 = Localidad, Zona2 = Zona
ALTER TABLE Pagos ADD COLUMN ID COUNTER

[rep97]
DELETE * FROM Clinica
DELETE * FROM Clinica2
INSERT INTO Clinica (NombreCliente, NombreMascota, Especie, Edad, Raza, Direccion, Telefonos, IDMascota) VALUES ('Ruiz Ana', 'Luna', 'Canino', '4 años', 'Caniche', 'Mitre 100', '4251111 / 155-2222', 120)
INSERT INTO Clinica2 (Temperatura, Peso, Atendio, Clinica, Fecha) VALUES (38.5, 3.2, 'Ana', 'Control', #03/05/24#)
delete * from auxrealimentacion
insert into auxrealimentacion (mas, ali, pro, dir, tel) values ('Luna', 'Alimento 15 kg', 'Ruiz Ana', 'Mitre 100', '4251111')
delete * from auxrevacunacion
insert into auxrevacunacion (mas, vac, pro, dir, tel, dos) values ('Luna', 'Antirrábica', 'Ruiz Ana', 'Mitre 100', '4251111', 2)
insert into auxrevacunacion (mas, vac, pro, dir, tel) values ('Luna', 'Antirrábica', 'Ruiz Ana', 'Mitre 100', '4251111')
DELETE * FROM Factura
DELETE * FROM Factura2
INSERT INTO Factura (Veterinaria, Factura, Cliente, Domicilio, Codigo, Articulo, Cantidad, PrecioUnitario, Total, Fecha, Subtotal, Descuento) VALUES ('Clínica Norte', 'A - 0001-00000007', 'Ruiz Ana', 'Mitre 100', '7790001000012', 'Alimento 15 kg', 1, 199.65, 199.65, #03/05/24#, 199.65, 0)
INSERT INTO Factura2 (Sup1, Sup2, Sup3, Sup4, Inf1, Inf2, Factura, Cliente, Domicilio, Codigo, Articulo, Cantidad, PrecioUnitario, Total, Fecha, SubTotal, Descuento) VALUES ('Clínica Norte', '', '', '', 'Gracias', '', 'A0001-00000007', 'Ruiz Ana', 'Mitre 100', '35', 'Alimento 15 kg', '1', 199.65, 199.65, #03/05/24#, 199.65, 0)
DELETE * FROM VentasDetalle
DELETE * FROM VentasCategorias
DELETE * FROM ComprasDetalle
DELETE * FROM ComprasCategorias
DELETE * FROM InventarioValorizado
DELETE * FROM ProductosClientes
DELETE * FROM VentasIVA
DELETE * FROM VentasGeneral
DELETE * FROM PagosProveedores
DELETE * FROM Cumple
DELETE * FROM Cumple2
INSERT INTO VentasDetalle (IDVenta, TipoFactura, NumeroFactura, Total, Fecha, Recargo, Pagos, Producto, Categoria) VALUES (1207, 'A', '0001-00000007', 199.65, #03/05/24#, 0, 50, 'Alimento 15 kg', 'Alimentos')
INSERT INTO VentasCategorias (IDVenta, TipoFactura, NumeroFactura, PrecioUnitario, Fecha, Cantidad, SubTotal, Producto, Categoria) VALUES (1207, 'A', '0001-00000007', 199.65, #03/05/24#, 1, 199.65, 'Alimento 15 kg', 'Alimentos')
INSERT INTO ComprasDetalle (IDCompra, TipoFactura, NumeroFactura, Total, Fecha, Recargo, Producto, Categoria) VALUES (88, '1', '0001-00004321', 300, #03/05/24#, 0, 'Alimento 15 kg', 'Alimentos')
INSERT INTO ComprasCategorias (IDCompra, TipoFactura, NumeroFactura, PrecioUnitario, Fecha, Cantidad, SubTotal, Producto, Categoria) VALUES (88, '1', '0001-00004321', 100, #03/05/24#, 3, 300, 'Alimento 15 kg', 'Alimentos')
INSERT INTO InventarioValorizado (Producto, CU, Valor, Total, IDCat, NombreCategoria) VALUES ('Alimento 15 kg', 60, 100, 6000, 1, 'Alimentos')
INSERT INTO ProductosClientes (Cliente, Producto, Cantidad, Precio, Subtotal) VALUES ('Ruiz Ana', 'Alimento 15 kg', 1, 199.65, 199.65)
INSERT INTO VentasIVA (IDVenta, Fecha, Factura, Producto, Cantidad, Precio, SubTotal, Impuesto, ImpuestoValor, SubTotalMenosImpuesto, Total) VALUES (1207, #03/05/24#, 'A0001-00000007', 'Alimento 15 kg', 1, 199.65, 199.65, 10, 18.15, 181.5, 199.65)
INSERT INTO VentasGeneral (IDVenta, Fecha, Factura, Producto, Cantidad, Precio, SubTotal, Total) VALUES (1207, #03/05/24#, 'A0001-00000007', 'Alimento 15 kg', 1, 199.65, 199.65, 199.65)
CREATE TABLE PagosProveedores (IDCompra LONG, Proveedor TEXT(50), Comprobante TEXT(30), Pago CURRENCY, Total CURRENCY, Fecha DATETIME, Saldo CURRENCY, SaldoTotal CURRENCY)
INSERT INTO PagosProveedores (Proveedor, Comprobante, Total, Fecha, Pago, IDCompra, Saldo, SaldoTotal) VALUES ('Laboratorio Sur', '0001-00004321', 300, #03/05/24#, 120, 88, 180, 180)
insert into Cumple (mascota, propietario, direccion, telefono, mail, perfil, fecha, idm) values ('Luna', 'Ruiz Ana', 'Mitre 100', '4251111', 'ana@correo.com', 'Destacado', #05/10/19#, 120)
insert into Cumple2 (FechaVencimiento, Nombre, Idm) values (#03/26/24#, 'Antirrábica', 120)
ALTER TABLE Factura ADD COLUMN Descuento CURRENCY
CREATE TABLE InventarioValorizado (Producto TEXT(100), CU CURRENCY, Valor CURRENCY, Total CURRENCY, IDCat LONG, NombreCategoria TEXT(100))
CREATE TABLE Factura2 (Sup1 TEXT(40), Sup2 TEXT(40), Sup3 TEXT(40), Sup4 TEXT(40), Inf1 TEXT(40), Inf2 TEXT(40), Factura TEXT(50), Cliente TEXT(50), Domicilio TEXT(50), Codigo TEXT(15), Articulo TEXT(50), Cantidad TEXT(50), PrecioUnitario CURRENCY, Total CURRENCY, Fecha DATETIME, SubTotal CURRENCY, Descuento CURRENCY)
